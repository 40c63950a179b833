# cmake -DSOURCE=host/web -DWORK=folder -DOUTPUT=file -P Bundle.cmake
#
# Bundles view3d.js with the library that it draws with into one script without a network. Where npm is not to be had, or
# the packages cannot be fetched, the script is empty: the build goes on, and pages say that they have no 3-D view.
cmake_minimum_required(VERSION 3.25)

set(patience 300)  # seconds

function(give_up why)
  message(WARNING "HTML pages will have no 3-D view: ${why}. To try again, remove ${OUTPUT} and build.")
  file(WRITE ${OUTPUT} "")
endfunction()

find_program(npm npm)
if(NOT npm)
  give_up("there is no npm")
  return()
endif()
file(MAKE_DIRECTORY ${WORK})
file(COPY ${SOURCE}/package.json ${SOURCE}/package-lock.json ${SOURCE}/.npmrc ${SOURCE}/view3d.js DESTINATION ${WORK})
execute_process(COMMAND ${npm} ci --ignore-scripts --no-audit --no-fund --fetch-retries=1 --fetch-timeout=30000
  WORKING_DIRECTORY ${WORK} RESULT_VARIABLE fault OUTPUT_VARIABLE log ERROR_VARIABLE log TIMEOUT ${patience})
if(NOT fault EQUAL 0)
  file(WRITE ${WORK}/npm.log "${log}")
  give_up("npm could not fetch the packages, see ${WORK}/npm.log")
  return()
endif()
execute_process(COMMAND ${WORK}/node_modules/.bin/esbuild view3d.js --bundle --minify --format=iife --charset=ascii
    --legal-comments=inline --log-level=warning --outfile=bundle.js
  WORKING_DIRECTORY ${WORK} RESULT_VARIABLE fault TIMEOUT ${patience})
if(NOT fault EQUAL 0)
  give_up("the bundler failed")
  return()
endif()

# The licence of what is bundled goes with it.
file(READ ${WORK}/node_modules/three/LICENSE licence)
file(WRITE ${OUTPUT} "/*! three.js\n${licence}*/\n")
file(READ ${WORK}/bundle.js bundle)
file(APPEND ${OUTPUT} "${bundle}")
