# What every target of the project is compiled with. `orvikdtm_flags` carries what is ours alone (warnings, sanitizers);
# what users of the library must share (the floating-point rule) is on the library's own target.
add_library(orvikdtm_flags INTERFACE)
target_compile_features(orvikdtm_flags INTERFACE cxx_std_20)
if(MSVC)
  target_compile_options(orvikdtm_flags INTERFACE /W4 $<$<BOOL:${ORVIKDTM_WERROR}>:/WX>)
else()
  target_compile_options(orvikdtm_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor -Wold-style-cast
    $<$<BOOL:${ORVIKDTM_WERROR}>:-Werror>)
endif()
if(ORVIKDTM_SANITIZE)
  target_compile_options(orvikdtm_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(orvikdtm_flags INTERFACE -fsanitize=address,undefined)
endif()
if(ORVIKDTM_SANITIZE_THREADS)
  target_compile_options(orvikdtm_flags INTERFACE -fsanitize=thread)
  target_link_options(orvikdtm_flags INTERFACE -fsanitize=thread)
endif()
if(ORVIKDTM_SANITIZE OR ORVIKDTM_SANITIZE_THREADS)  # gcc and clang tell programs in different ways
  target_compile_definitions(orvikdtm_flags INTERFACE ORVIKDTM_SANITIZED)
endif()
if(ORVIKDTM_FUZZ)  # the library tells the fuzzer where an input has led
  target_compile_options(orvikdtm_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
