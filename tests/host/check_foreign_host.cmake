# Builds the solver for a host framework that is not the reference host, and lets that host drive it:
#   cmake -DSOURCE_DIR=<dir> -DWORK=<dir> -DFMI_LIBRARY_FILE=<file> -DFMI_INCLUDE_DIR=<dir> -DFMU=<file>
#         -P check_foreign_host.cmake
# What was built last time is kept and brought up to date.

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(host "${WORK}/host")
run("${CMAKE_COMMAND}" -G Ninja -S "${SOURCE_DIR}/tests/host/foreign_host" -B "${host}"
    -DCMAKE_BUILD_TYPE=Debug)
run("${CMAKE_COMMAND}" --build "${host}")

set(solver "${WORK}/solver")
run("${CMAKE_COMMAND}" -G Ninja -S "${SOURCE_DIR}" -B "${solver}" -DCMAKE_BUILD_TYPE=Debug
    "-DHOST_FRAMEWORK_LIBRARY=${host}/libforeign_host.so" "-DHOST_FRAMEWORK_INCLUDE_DIR=${host}/include"
    -DFMI_LIBRARY=SYSTEM "-DFMILibrary_LIBRARY=${FMI_LIBRARY_FILE}"
    "-DFMILibrary_INCLUDE_DIR=${FMI_INCLUDE_DIR}")
run("${CMAKE_COMMAND}" --build "${solver}" --target fmi_solver)

set(run "${WORK}/run")
file(REMOVE_RECURSE "${run}")
file(MAKE_DIRECTORY "${run}")
run("${host}/drive_solver" "${solver}/lib/libfmi_solver.so" "${FMU}" "${run}")
