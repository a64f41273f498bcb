# Compiles every source that Windows compiles, as the project would have it compiled by Visual Studio.
# Fails with clang's words about all that it refuses; compiles again only what has changed.
#
#   cmake -D SOURCE_DIR=... -D WINDOWS_DIR=<the MinGW build> -D BINARY_DIR=... -P compile_sources.cmake

include("${CMAKE_CURRENT_LIST_DIR}/missing_packages.cmake")
if(missing_packages)
  message("skipped: to be installed first: ${missing_packages}")
  return()
endif()

# zlib's headers by themselves: those around them are MinGW's. Nothing is linked with its library.
set(zlib "${BINARY_DIR}/zlib")
file(COPY /usr/x86_64-w64-mingw32/include/zlib.h /usr/x86_64-w64-mingw32/include/zconf.h
     DESTINATION "${zlib}")
file(CREATE_LINK "${WINDOWS_DIR}/debian_sources" "${BINARY_DIR}/debian_sources" SYMBOLIC)
execute_process(
  COMMAND "${CMAKE_COMMAND}" -G Ninja -S "${SOURCE_DIR}" -B "${BINARY_DIR}"
          "-DCMAKE_TOOLCHAIN_FILE=${CMAKE_CURRENT_LIST_DIR}/toolchain.cmake"
          -DCMAKE_BUILD_TYPE=Release -DFMI_SOLVER_WARNINGS_AS_ERRORS=ON -DFMI_LIBRARY=BUNDLED
          -Dgtest_disable_pthreads=ON # CMake cannot ask a linker whether there are any.
          "-DZLIB_INCLUDE_DIR=${zlib}" "-DZLIB_LIBRARY=${zlib}/zlib.lib"
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${CMAKE_COMMAND}" --build "${BINARY_DIR}" --target build_values
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

# The build's own rules would link the libraries that a source's target needs before compiling it, so
# the compile commands go into a build of nothing else.
set(rules "rule compile\n  command = $command\n  deps = msvc\n  description = $in\n")
file(READ "${BINARY_DIR}/compile_commands.json" commands)
string(JSON count LENGTH "${commands}")
math(EXPR last "${count} - 1")
set(compiled 0)
foreach(index RANGE ${last})
  string(JSON file GET "${commands}" ${index} file)
  string(JSON command GET "${commands}" ${index} command)
  if(file MATCHES "\\.(c|cpp)$" AND NOT file MATCHES "^${BINARY_DIR}/" AND command MATCHES "/Fo([^ ]+)")
    string(APPEND rules "build ${CMAKE_MATCH_1}: compile ${file}\n")
    string(REPLACE "$" "$$" command "${command}")
    string(REPLACE " /nologo " " /nologo /showIncludes " command "${command}")
    string(APPEND rules "  command = ${command}\n")
    math(EXPR compiled "${compiled} + 1")
  endif()
endforeach()
if(compiled EQUAL 0)
  message(FATAL_ERROR "There is nothing to compile in ${BINARY_DIR}/compile_commands.json")
endif()
file(CONFIGURE OUTPUT "${BINARY_DIR}/sources.ninja" CONTENT "${rules}" @ONLY)

find_program(NINJA ninja REQUIRED)
execute_process(COMMAND "${NINJA}" -C "${BINARY_DIR}" -f sources.ninja -k 0
                COMMAND_ERROR_IS_FATAL ANY)
message(STATUS "Compiled ${compiled} sources")
