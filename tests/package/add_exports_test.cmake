# add_exports_test(<library target> <public header>...): a test that the library exports exactly what
# its headers declare.
function(add_exports_test target)
  list(TRANSFORM ARGN PREPEND "${PROJECT_SOURCE_DIR}/include/" OUTPUT_VARIABLE headers)
  add_test(NAME exports_${target}
    COMMAND "${CMAKE_COMMAND}" "-DLIBRARY=$<TARGET_FILE:${target}>" "-DHEADERS=${headers}"
            "-DOBJDUMP=${CMAKE_OBJDUMP}" "-DNM=${CMAKE_NM}" "-DPE=${WIN32}"
            -P "${PROJECT_SOURCE_DIR}/tests/support/check_exports.cmake")
endfunction()
