# Installs the library with its public headers, the host program, the CMake package, the pkg-config file and the
# documentation. The installed tree can be moved as a whole: nothing in it names the place that it was installed to.
# There are three components: what programs need that run (library), what building them needs (development), and orvikdtm
# with its manual page and completions (tool).
include(CMakePackageConfigHelpers)

install(TARGETS OrvikDTMAlgorithm EXPORT OrvikDTMAlgorithmTargets
  RUNTIME COMPONENT library
  LIBRARY COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development
  FILE_SET HEADERS COMPONENT development)
if(ORVIKDTM_BUILD_HOST)
  install(TARGETS orvikdtm COMPONENT tool)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)

# What a C++ compiler links by itself and a C compiler does not: for programs in C with a static library.
set(cxx_runtime ${CMAKE_CXX_IMPLICIT_LINK_LIBRARIES})
list(FILTER cxx_runtime INCLUDE REGEX "^(stdc\\+\\+|c\\+\\+|c\\+\\+abi|m)$")
list(REMOVE_DUPLICATES cxx_runtime)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/OrvikDTMAlgorithm)
install(EXPORT OrvikDTMAlgorithmTargets NAMESPACE OrvikDTMAlgorithm:: DESTINATION ${package_dir}
  COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/OrvikDTMAlgorithmConfig.cmake.in
  ${PROJECT_BINARY_DIR}/OrvikDTMAlgorithmConfig.cmake INSTALL_DESTINATION ${package_dir})
# Before 1.0 a minor version may break its users.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OrvikDTMAlgorithmConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OrvikDTMAlgorithmConfig.cmake
              ${PROJECT_BINARY_DIR}/OrvikDTMAlgorithmConfigVersion.cmake
              ${CMAKE_CURRENT_LIST_DIR}/FindTinyXML.cmake DESTINATION ${package_dir} COMPONENT development)

set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  set(pkgconfig_prefix ${CMAKE_INSTALL_PREFIX})
else()
  file(RELATIVE_PATH up ${CMAKE_INSTALL_PREFIX}/${pkgconfig_dir} ${CMAKE_INSTALL_PREFIX})
  set(pkgconfig_prefix "\${pcfiledir}/${up}")
endif()
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_LIBDIR BASE_DIRECTORY "\${prefix}" OUTPUT_VARIABLE pkgconfig_libdir)
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_INCLUDEDIR BASE_DIRECTORY "\${prefix}" OUTPUT_VARIABLE pkgconfig_includedir)
set(pkgconfig_cflags "-ffp-contract=off")
set(pkgconfig_libs "")
set(pkgconfig_libs_private "")
if(NOT BUILD_SHARED_LIBS)
  string(APPEND pkgconfig_cflags " -DORVIKDTM_STATIC")
  set(pkgconfig_libs " -ltinyxml")
  list(TRANSFORM cxx_runtime PREPEND "-l" OUTPUT_VARIABLE pkgconfig_libs_private)
  list(JOIN pkgconfig_libs_private " " pkgconfig_libs_private)
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/OrvikDTMAlgorithm.pc.in ${PROJECT_BINARY_DIR}/OrvikDTMAlgorithm.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/OrvikDTMAlgorithm.pc DESTINATION ${pkgconfig_dir} COMPONENT development)
