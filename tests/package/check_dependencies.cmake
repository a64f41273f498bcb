# Every program and DLL must start on a machine that has Windows alone: what they need is Windows's own
# or stands beside them.

set(allowed kernel32.dll msvcrt.dll advapi32.dll fmi_tools.dll fmi_solver.dll fmilib_shared.dll host_framework.dll
            needed_library.dll)

file(GLOB_RECURSE artefacts "${BINARY_DIR}/bin/*.exe" "${BINARY_DIR}/bin/*.dll"
     "${BINARY_DIR}/example_fmus/slaves/*.dll"
     "${BINARY_DIR}/tests/fmus/*/slaves/*.dll")
if(NOT artefacts)
  message(FATAL_ERROR "Nothing to check in ${BINARY_DIR}")
endif()
foreach(artefact IN LISTS artefacts)
  execute_process(COMMAND "${OBJDUMP}" -p "${artefact}" OUTPUT_VARIABLE headers
                  COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "DLL Name: [^\n]*" needed "${headers}")
  list(TRANSFORM needed REPLACE "DLL Name: " "")
  list(TRANSFORM needed TOLOWER)
  list(REMOVE_ITEM needed ${allowed})
  if(needed)
    message(SEND_ERROR "${artefact} needs ${needed}")
  endif()
endforeach()
