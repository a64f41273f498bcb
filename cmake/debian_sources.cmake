# pugixml and minizip compiled from Debian's source packages, which scripts/fetch_windows_sources
# unpacks into the build tree: where there is no library of them for the target, or none with the
# instrumentation that is wanted. Expects ZLIB::ZLIB.

set(sources "${PROJECT_BINARY_DIR}/debian_sources")
execute_process(COMMAND "${PROJECT_SOURCE_DIR}/scripts/fetch_windows_sources" "${sources}"
                COMMAND_ERROR_IS_FATAL ANY)

# add_foreign_library(<name> <source>...): as its authors wrote it, without our warnings.
function(add_foreign_library name)
  add_library(${name} STATIC EXCLUDE_FROM_ALL ${ARGN})
  add_library(${name}::${name} ALIAS ${name})
  target_compile_options(${name} PRIVATE -w $<$<BOOL:${FMI_SOLVER_FUZZ}>:-fno-sanitize=undefined>)
endfunction()

add_foreign_library(pugixml "${sources}/pugixml/src/pugixml.cpp")
target_include_directories(pugixml SYSTEM INTERFACE "${sources}/pugixml/src")

add_foreign_library(minizip "${sources}/minizip/unzip.c" "${sources}/minizip/zip.c"
                    "${sources}/minizip/ioapi.c" $<$<BOOL:${WIN32}>:${sources}/minizip/iowin32.c>)
target_include_directories(minizip SYSTEM INTERFACE "${sources}")
target_link_libraries(minizip PUBLIC ZLIB::ZLIB)
