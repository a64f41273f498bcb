# Makes the archive that is handed out, unpacks it elsewhere, builds a consumer's project against it,
# and runs what that made with an example FMU of the archive.

set(work "${BINARY_DIR}/consumer")
file(REMOVE_RECURSE "${work}")
file(MAKE_DIRECTORY "${work}/run")

function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY "${work}/run" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

run("${CMAKE_CPACK_COMMAND}" --config "${BINARY_DIR}/CPackConfig.cmake" -B "${work}")
file(GLOB archive "${work}/*.zip" "${work}/*.tar.gz")
file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${work}/installed")
file(GLOB prefix "${work}/installed/*")

foreach(expected include/fmi_tools.h include/host/solver.h share/fmi_tools/fmus/tyre.fmu share/doc/fmi_solver/LICENSE)
  if(NOT EXISTS "${prefix}/${expected}")
    message(FATAL_ERROR "${archive} has no ${expected}")
  endif()
endforeach()

# Debian knows which package a file is from.
find_program(DPKG dpkg)
if(DPKG)
  run("${CMAKE_CURRENT_LIST_DIR}/check_licences" "${BINARY_DIR}" "${prefix}")
else()
  message(STATUS "The licences were not compared with what is linked in: there is no dpkg here")
endif()
file(GLOB binaries "${prefix}/bin/*" "${prefix}/lib/*.so")
if(CHECK_BINARIES)
  run(${CHECK_BINARIES} ${binaries})
endif()

run("${CMAKE_COMMAND}" -G Ninja -S "${SOURCE_DIR}/tests/package/consumer" -B "${work}/build"
    "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}" "-Dfmi_tools_DIR=${prefix}/lib/cmake/fmi_tools" -DCMAKE_BUILD_TYPE=Release
    "-DEXAMPLES=${prefix}/share/doc/fmi_solver/docs/examples")
run("${CMAKE_COMMAND}" --build "${work}/build")

# Windows finds DLLs beside the program.
file(GLOB libraries "${prefix}/bin/*.dll")
file(COPY ${libraries} DESTINATION "${work}/build")
run(${EMULATOR} "${work}/build/make_solver${SUFFIX}")
run(${EMULATOR} "${work}/build/run_fmu${SUFFIX}" "${prefix}/share/fmi_tools/fmus/tyre.fmu"
    "hubPosition[3]" 0.31 "force[3]")
file(STRINGS "${work}/run/run_fmu.csv" rows)
list(LENGTH rows count)
if(NOT count EQUAL 1001)
  message(FATAL_ERROR "run_fmu.csv has ${count} lines, not a header and 1000 rows")
endif()
run(${EMULATOR} "${prefix}/bin/fmu_run${SUFFIX}" --info "${prefix}/share/fmi_tools/fmus/tyre.fmu")
