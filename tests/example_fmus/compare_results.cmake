# Runs the same FMUs with the same inputs on Linux and on Windows and compares the results byte by byte.

set(native "${SOURCE_DIR}/build/linux")
if(NOT EXISTS "${native}/bin/fmu_run")
  message(FATAL_ERROR "${native} is not built: run scripts/test windows")
endif()
file(REMOVE_RECURSE "${BINARY_DIR}/compared")

# run(<platform> <directory of the build> <fmu> <argument>...): leaves <platform>.csv behind.
function(run platform build fmu)
  set(folder "${BINARY_DIR}/compared/${fmu}")
  file(MAKE_DIRECTORY "${folder}")
  if(platform STREQUAL "linux")
    set(program "${build}/bin/fmu_run")
  else()
    set(program ${EMULATOR} "${build}/bin/fmu_run.exe")
  endif()
  execute_process(COMMAND ${program} "${build}/fmus/${fmu}.fmu" --output-file ${platform}.csv
                          --log-file ${platform}.out --quiet ${ARGN}
                  WORKING_DIRECTORY "${folder}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(compare fmu)
  run(linux "${native}" ${fmu} ${ARGN})
  run(windows "${BINARY_DIR}" ${fmu} ${ARGN})
  set(results "${BINARY_DIR}/compared/${fmu}")
  file(STRINGS "${results}/linux.csv" rows)
  list(LENGTH rows count)
  if(count LESS 1000)
    message(FATAL_ERROR "${results}/linux.csv has only ${count} lines")
  endif()
  execute_process(COMMAND "${CMAKE_COMMAND}" -E compare_files
                          "${results}/linux.csv" "${results}/windows.csv"
                  COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(inputs "${CMAKE_CURRENT_LIST_DIR}")
compare(tyre --stop-time 2 --output-interval 0.001 --input-file "${inputs}/rolling_tyre.csv")
compare(shock_absorber --stop-time 2 --output-interval 0.001
        --input-file "${inputs}/shaken_absorber.csv")
