# Debian packages, made by `scripts/package`: the library, what building with it needs, and the program. A static build
# has no package of the library alone.
set(ORVIKDTM_MAINTAINER "OrvikDTMAlgorithm maintainers" CACHE STRING "Who answers for the packages: name <address>")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvikdtm)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${ORVIKDTM_MAINTAINER})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian/Files.cmake)
set(CPACK_ORVIKDTM_SOURCE ${PROJECT_SOURCE_DIR})

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)  # on each other, at the same version
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/OrvikDTMAlgorithm)
set(CPACK_COMPONENTS_ALL development)

# A package's first line is its own, not the project's. No line is longer than Debian bears.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(library_text "It triangulates survey points, knows the height of the ground at\nany place, and measures fill and cut volumes.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME liborvikdtmalgorithm-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "${PROJECT_DESCRIPTION}: development\n${library_text}\nThis package holds headers, documentation, and what CMake and\npkg-config look for.")
if(BUILD_SHARED_LIBS)
  list(PREPEND CPACK_COMPONENTS_ALL library)
  # Debian names the package of a shared library after its soname.
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME liborvikdtmalgorithm${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
  set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "${PROJECT_DESCRIPTION}\n${library_text}")
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/debian/triggers)
  set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)
else()
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS libtinyxml-dev)  # which the library leaves to its users
endif()

if(ORVIKDTM_BUILD_HOST)
  list(APPEND CPACK_COMPONENTS_ALL tool)
  set(CPACK_DEBIAN_TOOL_PACKAGE_NAME orvikdtm)
  set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION science)
  set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
  set(CPACK_COMPONENT_TOOL_DESCRIPTION
    "Terrain models from survey points at the command line\nStatistics, heights, contours and earthwork volumes of surveyed\nground, with reports, maps and pages.")
  if(BUILD_SHARED_LIBS)
    set(CPACK_COMPONENT_TOOL_DEPENDS library)
  endif()
endif()

include(CPack)
