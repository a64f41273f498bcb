# Checks that a library exports exactly the functions of its public headers:
#   cmake -DLIBRARY=<file> -DHEADERS=<file>;... -DOBJDUMP=<program> [-DNM=<program>] -DPE=<bool>
#         -P check_exports.cmake

set(expected "")
foreach(header IN LISTS HEADERS)
  file(READ "${header}" text)
  string(REGEX MATCHALL "_EXPORT[^;()#]*[ *\n][A-Za-z0-9]+\\(" declarations "${text}")
  foreach(declaration IN LISTS declarations)
    string(REGEX MATCH "[A-Za-z0-9]+\\($" name "${declaration}")
    string(REPLACE "(" "" name "${name}")
    list(APPEND expected "${name}")
  endforeach()
endforeach()

if(PE)
  execute_process(COMMAND "${OBJDUMP}" -p "${LIBRARY}" OUTPUT_VARIABLE listing
                  COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE ".*\\[Ordinal/Name Pointer\\] Table([^.]*).*" "\\1" listing "${listing}")
  string(REGEX MATCHALL "\\[ *[0-9]+\\][^\n]*" rows "${listing}")
else()
  execute_process(COMMAND "${NM}" -D --defined-only "${LIBRARY}" OUTPUT_VARIABLE listing
                  COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^\n]+" rows "${listing}")
endif()

set(exported "")
foreach(row IN LISTS rows)
  string(REGEX MATCH "[^ ]+$" name "${row}")
  list(APPEND exported "${name}")
endforeach()

list(SORT expected)
list(SORT exported)
list(LENGTH exported count)
if(NOT exported STREQUAL expected)
  message(FATAL_ERROR "${LIBRARY} exports ${count} names:\n  ${exported}\ninstead of\n  ${expected}")
endif()
message(STATUS "${LIBRARY} exports the ${count} names of its headers")
