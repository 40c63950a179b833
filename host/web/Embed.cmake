# cmake -DOUTPUT=file.cpp -DFILES=name=path,... -P Embed.cmake
#
# Writes a C++ file that defines pictures::web::<name> with the text of each file.
cmake_minimum_required(VERSION 3.25)

file(WRITE ${OUTPUT} "#include \"pictures/WebParts.h\"\n\nnamespace pictures::web {\n")
string(REPLACE "," ";" files "${FILES}")
foreach(entry IN LISTS files)
  string(REGEX MATCH "^([^=]+)=(.*)$" matched "${entry}")
  set(name ${CMAKE_MATCH_1})
  file(READ "${CMAKE_MATCH_2}" bytes HEX)
  string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${bytes}")
  set(kLine "................................................................")  # 16 bytes, four characters each
  string(REGEX REPLACE "(${kLine}${kLine})" "\\1\"\n  \"" bytes "${bytes}")
  file(APPEND ${OUTPUT} "const std::string_view ${name}(\n  \"${bytes}\");\n")
endforeach()
file(APPEND ${OUTPUT} "}  // namespace pictures::web\n")
