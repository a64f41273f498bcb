# add_exports_test(<library target> <header>...): a test that the library exports exactly what its
# headers, named from the project's top folder, declare.
function(add_exports_test target)
  list(TRANSFORM ARGN PREPEND "${PROJECT_SOURCE_DIR}/" OUTPUT_VARIABLE headers)
  add_test(NAME exports_${target}
    COMMAND "${CMAKE_COMMAND}" "-DLIBRARY=$<TARGET_FILE:${target}>" "-DHEADERS=${headers}"
            "-DOBJDUMP=${CMAKE_OBJDUMP}" "-DNM=${CMAKE_NM}" "-DPE=${WIN32}"
            -P "${PROJECT_SOURCE_DIR}/tests/package/check_exports.cmake")
endfunction()
