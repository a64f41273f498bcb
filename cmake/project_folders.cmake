# add_project_folder(<folder>): descends into a subsystem's folder.
function(add_project_folder folder)
  if(EXISTS "${PROJECT_SOURCE_DIR}/${folder}/CMakeLists.txt")
    add_subdirectory("${PROJECT_SOURCE_DIR}/${folder}" "${PROJECT_BINARY_DIR}/${folder}")
  endif()
endfunction()
