# What Debian wants of every package beside what is installed: licences and changelogs under the package's own name,
# changelogs and manual pages compressed. Run by CPack on the staged files, one folder for each component.
function(compress from to)
  # The same bytes each time: without the file's name and time.
  execute_process(COMMAND gzip -9 -n -c ${from} OUTPUT_FILE ${to} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  set(staged ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX})
  file(GLOB pages ${staged}/share/man/man*/*.[1-9])
  foreach(page IN LISTS pages)
    compress(${page} ${page}.gz)
    file(REMOVE ${page})
  endforeach()

  string(TOUPPER ${component} upper)
  set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  set(folder ${staged}/share/doc/${package})
  file(MAKE_DIRECTORY ${folder})
  configure_file(${CPACK_ORVIKDTM_SOURCE}/docs/third-party-licences.txt ${folder}/copyright COPYONLY)
  compress(${CPACK_ORVIKDTM_SOURCE}/CHANGELOG.md ${folder}/changelog.gz)

  string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC)  # SOURCE_DATE_EPOCH when that is set
  set(debian_changes ${folder}/changelog.Debian)
  file(WRITE ${debian_changes}
    "${package} (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium\n\n"
    "  * What is new stands in changelog.gz.\n\n -- ${CPACK_PACKAGE_CONTACT}  ${now}\n")
  compress(${debian_changes} ${debian_changes}.gz)
  file(REMOVE ${debian_changes})
endforeach()
