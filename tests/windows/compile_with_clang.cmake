# Compiles each source of the product for Windows with clang, as the compile commands of the MinGW
# build say, without making object files. Fails with clang's words about all that it refuses.

execute_process(COMMAND "${CLANG}" -print-resource-dir OUTPUT_VARIABLE clang_headers
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
# MinGW's headers instead of this machine's, and clang's own in place of those made for GCC.
list(FILTER SYSTEM_INCLUDES EXCLUDE REGEX "/include(-fixed)?$")
list(TRANSFORM SYSTEM_INCLUDES PREPEND -isystem)
set(flags --target=x86_64-w64-windows-gnu -fsyntax-only -nostdinc ${SYSTEM_INCLUDES}
    "-isystem${clang_headers}/include" -isystem/usr/x86_64-w64-mingw32/include
    # GCC's -Wconversion does not have this part of clang's, nor has /W4.
    -Wno-sign-conversion
    # The build switches some of GCC's warnings off that clang does not have.
    -Wno-unknown-warning-option)

function(compile_source entry)
  string(JSON file GET "${entry}" file)
  string(JSON directory GET "${entry}" directory)
  string(JSON command GET "${entry}" command)
  if(NOT file MATCHES "\\.(c|cpp)$" OR file MATCHES "^(${BINARY_DIR}|${SOURCE_DIR}/tests)/")
    return()
  endif()
  string(REGEX REPLACE "^.*mingw32-(gcc|g..)-posix " "" arguments "${command}")
  string(REGEX REPLACE " -o .*$" "" arguments "${arguments}")
  separate_arguments(arguments UNIX_COMMAND "${arguments}")
  list(REMOVE_ITEM arguments -fno-keep-inline-dllexport) # known to GCC alone
  if(file MATCHES "\\.c$")
    set(language -xc)
  else()
    set(language -xc++)
  endif()
  execute_process(COMMAND "${CLANG}" ${language} ${flags} ${arguments} "${file}"
                  WORKING_DIRECTORY "${directory}" RESULT_VARIABLE result ERROR_VARIABLE words)
  if(result)
    message(SEND_ERROR "${words}")
  endif()
endfunction()

file(READ "${BINARY_DIR}/compile_commands.json" commands)
string(JSON count LENGTH "${commands}")
math(EXPR last "${count} - 1")
foreach(index RANGE ${last})
  string(JSON entry GET "${commands}" ${index})
  compile_source("${entry}")
endforeach()
