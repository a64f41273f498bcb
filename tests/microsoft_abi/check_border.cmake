# Builds a host and a solver in the Microsoft ABI and runs them under Wine. They are linked against
# import libraries made from the DLLs that Wine has in the place of Microsoft's.
#
#   cmake -D SOURCE_DIR=... -D BINARY_DIR=... -D WINE_PREFIX=... -P check_border.cmake

include("${CMAKE_CURRENT_LIST_DIR}/missing_packages.cmake")
if(missing_packages)
  message("skipped: to be installed first: ${missing_packages}")
  return()
endif()
include("${CMAKE_CURRENT_LIST_DIR}/compiler.cmake")
set(wine_libraries /usr/lib/x86_64-linux-gnu/wine/x86_64-windows)
set(border "${CMAKE_CURRENT_LIST_DIR}/border")
file(MAKE_DIRECTORY "${BINARY_DIR}")

function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY "${BINARY_DIR}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# make_import_library(<name> <export>...): <name>.lib for <name>.dll; "name=function" exports the
# function under the name.
function(make_import_library name)
  list(JOIN ARGN "\n  " exports)
  file(WRITE "${BINARY_DIR}/${name}.def" "LIBRARY ${name}.dll\nEXPORTS\n  ${exports}\n")
  run("${llvm}/bin/llvm-dlltool" -m i386:x86-64 -d ${name}.def -l ${name}.lib)
endfunction()

function(make_wine_import_library name)
  execute_process(COMMAND "${llvm}/bin/llvm-readobj" --coff-exports "${wine_libraries}/${name}.dll"
                  OUTPUT_VARIABLE exports COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "Name: [A-Za-z_][A-Za-z_0-9]*" exports "${exports}")
  list(TRANSFORM exports REPLACE "Name: " "")
  make_import_library(${name} ${exports})
endfunction()

function(compile source)
  run("${llvm}/bin/clang-cl" --target=x86_64-pc-windows-msvc ${cxx_options} /std:c++20 /permissive-
      /EHsc /MD /O2 /GS- /Zc:threadSafeInit- /W4 /WX -D_LIBCPP_DISABLE_VISIBILITY_ANNOTATIONS
      -D_LIBCPP_HARDENING_MODE=_LIBCPP_HARDENING_MODE_NONE -DFMI_SOLVER_BUILDING
      "-I${SOURCE_DIR}" "-I${SOURCE_DIR}/include" "-Fo${source}.obj" -c -- "${border}/${source}.cpp")
endfunction()

foreach(name ucrtbase vcruntime140 kernel32)
  make_wine_import_library(${name})
endforeach()
set(libraries ucrtbase.lib vcruntime140.lib kernel32.lib)
set(link "${llvm}/bin/lld-link" /nologo /nodefaultlib /manifest:no)

foreach(source runtime solver host)
  compile(${source})
endforeach()

# What the solver needs of the host is what the host exports.
execute_process(COMMAND "${llvm}/bin/llvm-nm" --undefined-only --just-symbol-name solver.obj
                WORKING_DIRECTORY "${BINARY_DIR}" OUTPUT_VARIABLE needed COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[?][^\n]*[@01](Solver|ModelSetup|CoupledCondition|Result|Logger|Object)@@[^\n]+"
       exports "${needed}")
list(TRANSFORM exports REPLACE "^(.getName@Object@@.*)$" "\\1=nameOfObject")
list(JOIN exports "\n  " exports)
file(WRITE "${BINARY_DIR}/border_host.def" "LIBRARY border_host.exe\nEXPORTS\n  ${exports}\n")

run(${link} /entry:mainCRTStartup /subsystem:console /def:border_host.def /implib:border_host.lib
    /out:border_host.exe host.obj runtime.obj ${libraries})
run(${link} /dll /out:border_solver.dll solver.obj runtime.obj border_host.lib ${libraries})
run("${SOURCE_DIR}/scripts/run_wine" "${WINE_PREFIX}" "${BINARY_DIR}/border_host.exe")
