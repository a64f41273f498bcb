# add_program_texts(<program>): its manual page and its completion for bash, written by the program
# itself so that they say what --help says, and installed with it.
function(add_program_texts program)
  if(WIN32) # has neither man nor bash
    return()
  endif()
  set(directory "${PROJECT_BINARY_DIR}/program_texts")
  file(MAKE_DIRECTORY "${directory}")
  set(page "${directory}/${program}.1")
  set(completion "${directory}/${program}")
  add_custom_command(OUTPUT "${page}" "${completion}"
    COMMAND ${program} --man-page > "${page}"
    COMMAND ${program} --completion > "${completion}"
    DEPENDS ${program})
  add_custom_target(${program}_texts ALL DEPENDS "${page}" "${completion}")
  install(FILES "${page}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
  install(FILES "${completion}" DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
endfunction()
