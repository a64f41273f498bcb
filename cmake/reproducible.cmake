# Two builds of one commit give the same bytes, wherever and whenever they are made: nothing in a file
# depends on the folders or on the clock. The build's date is the commit's (write_build_values.cmake).

if(MSVC)
  target_compile_options(project_settings INTERFACE /Brepro)
  target_link_options(project_settings INTERFACE /Brepro)
elseif(NOT FMI_SOLVER_COVERAGE) # gcov's files name the sources.
  target_compile_options(project_settings INTERFACE
    "-ffile-prefix-map=${PROJECT_BINARY_DIR}=." "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")
  target_link_options(project_settings INTERFACE
    $<$<BOOL:${MINGW}>:LINKER:--no-insert-timestamp>)
endif()
