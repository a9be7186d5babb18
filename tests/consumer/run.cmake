# SPDX-License-Identifier: MIT
# Builds the example program the way MODE says and runs it.
#   cmake -DMODE=installed|subdirectory -DSOURCE=... -DBUILD=... -DWORK=... -DQT=5|6
#         -DCORE=... -DCOMPILER=... -DFLAGS=... -P run.cmake

set(settings -G Ninja -DCMAKE_BUILD_TYPE=None -DCMAKE_CXX_COMPILER=${COMPILER}
    "-DCMAKE_CXX_FLAGS=${FLAGS}")
find_program(ccache ccache)
if(ccache)
    list(APPEND settings -DCMAKE_CXX_COMPILER_LAUNCHER=${ccache})
endif()

if(MODE STREQUAL "installed")
    file(REMOVE_RECURSE ${WORK})
    execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    set(project ${SOURCE}/examples/host)
    list(APPEND settings -DCMAKE_PREFIX_PATH=${WORK}/prefix)
else()
    # With the bundled core it is configured only; to build that once more would take minutes.
    set(project ${SOURCE}/tests/consumer)
    execute_process(COMMAND ${CMAKE_COMMAND} -S ${project} -B ${WORK}/bundled ${settings}
        -DMVR_QT=${QT}
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    list(APPEND settings -DHOST_CORE=${CORE} -DMVR_QT=${QT} -DOTHER_BUILD=${BUILD})
endif()

execute_process(COMMAND ${CMAKE_COMMAND} -S ${project} -B ${WORK}/build ${settings}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK}/build --target scriptnotes
    COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${WORK}/build/scriptnotes ${SOURCE}/examples/screenplay.fdx
    OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
if(NOT output MATCHES "Constance: Check that no registered vessel has this name")
    message(FATAL_ERROR "The example did not print the first note:\n${output}")
endif()

if(MODE STREQUAL "installed")
    execute_process(COMMAND ${WORK}/prefix/bin/mvrtext --version COMMAND_ERROR_IS_FATAL ANY)
endif()
