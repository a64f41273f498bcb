# Writes the header with the build values: cmake -D... -P write_build_values.cmake
#
# SOURCE_DIRECTORY  the sources
# GIT               the git program, empty when there is none
# VERSION, VERSION_SUFFIX, TEMPLATE, HEADER
#
# A source archive carries its identity in source_identity.txt, filled in when it was made; it is
# asked first, because an archive may well be unpacked inside some other repository.

set(COMMIT "0000000")
set(BRANCH "unknown")

# ask_git(<variable> <argument>...): git's answer, or empty.
function(ask_git variable)
  execute_process(COMMAND "${GIT}" -C "${SOURCE_DIRECTORY}" ${ARGN} OUTPUT_VARIABLE answer
                  OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  set(${variable} "${answer}" PARENT_SCOPE)
endfunction()

file(READ "${SOURCE_DIRECTORY}/cmake/source_identity.txt" identity)
if(identity MATCHES "commit=([0-9a-f]+)")
  string(SUBSTRING "${CMAKE_MATCH_1}" 0 7 COMMIT)
  # "HEAD -> main, tag: v1.0" for the branch that was checked out, "main, other" for another one.
  if(identity MATCHES "refs=(HEAD -> )?([^,\n]+)")
    set(BRANCH "${CMAKE_MATCH_2}")
  endif()
elseif(GIT)
  ask_git(head rev-parse HEAD)
  if(head)
    string(SUBSTRING "${head}" 0 7 COMMIT)
    ask_git(BRANCH rev-parse --abbrev-ref HEAD)
  endif()
endif()

configure_file("${TEMPLATE}" "${HEADER}" @ONLY)
