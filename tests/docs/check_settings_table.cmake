# The page "Into your host" has the index of every setting, as host/setting_indices.h defines it.
#   cmake -D SOURCE_DIR=... -P check_settings_table.cmake

file(STRINGS "${SOURCE_DIR}/docs/into_your_host.md" rows REGEX "^[|] (solver|solution) settings [|]")
list(TRANSFORM rows REPLACE "^[|] ([a-z]+) settings [|] ([a-z]+) [|] ([0-9]+) [|].*" "\\1 \\2 \\3")

file(READ "${SOURCE_DIR}/host/setting_indices.h" header)
string(REPLACE ";" "," header "${header}") # A list's separator.
string(REGEX MATCHALL "namespace host::[a-z_]+ {|[0-9]+, +///< [A-Z][a-z]+" parts "${header}")
set(expected "")
foreach(part IN LISTS parts)
  if(part MATCHES "namespace host::([a-z]+)_([a-z]+)")
    set(store "${CMAKE_MATCH_1}")
    set(kind "${CMAKE_MATCH_2}")
  elseif(part MATCHES "([0-9]+), +///< ([A-Z][a-z]+)")
    set(index "${CMAKE_MATCH_1}")
    set(value_kind "${CMAKE_MATCH_2}")
    if(kind STREQUAL "option")
      set(value_kind option)
    endif()
    string(TOLOWER "${store} ${value_kind} ${index}" row)
    list(APPEND expected "${row}")
  endif()
endforeach()

list(SORT rows)
list(SORT expected)
list(LENGTH expected count)
if(count LESS 7 OR NOT rows STREQUAL expected)
  message(FATAL_ERROR "docs/into_your_host.md has\n  ${rows}\nand host/setting_indices.h\n  ${expected}")
endif()
