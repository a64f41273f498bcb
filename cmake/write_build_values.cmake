# Writes the header with the build values: cmake -D... -P write_build_values.cmake
#
# SOURCE_DIRECTORY  the sources
# GIT               the git program, empty when there is none
# VERSION, VERSION_SUFFIX, TEMPLATE, HEADER
#
# A source archive carries its identity in source_identity.txt, filled in when it was made; it is
# asked first, because an archive may well be unpacked inside some other repository.
#
# The branch is the one that is checked out. Without one it is the name of any branch or tag at the
# same commit, and "unknown" when there is none.

set(COMMIT "0000000")
set(BRANCH "")

# ask_git(<variable> <argument>...): git's answer, or empty.
function(ask_git variable)
  execute_process(COMMAND "${GIT}" -C "${SOURCE_DIRECTORY}" ${ARGN} OUTPUT_VARIABLE answer
                  OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  set(${variable} "${answer}" PARENT_SCOPE)
endfunction()

file(READ "${SOURCE_DIRECTORY}/cmake/source_identity.txt" identity)
if(identity MATCHES "commit=([0-9a-f]+)")
  string(SUBSTRING "${CMAKE_MATCH_1}" 0 7 COMMIT)
  # "HEAD -> main, tag: v1.0" for the branch that was checked out, "HEAD, tag: v1.0, main" without one.
  string(REGEX MATCH "refs=[^\n]*" BRANCH "${identity}")
  string(REGEX REPLACE "^refs=(HEAD -> |HEAD, |HEAD$)?(tag: )?" "" BRANCH "${BRANCH}")
  string(REGEX REPLACE ", .*" "" BRANCH "${BRANCH}")
elseif(GIT)
  ask_git(head rev-parse HEAD)
  if(head)
    string(SUBSTRING "${head}" 0 7 COMMIT)
    ask_git(BRANCH symbolic-ref --quiet --short HEAD)
  endif()
  if(head AND NOT BRANCH)
    ask_git(BRANCH for-each-ref --points-at HEAD --count 1 "--format=%(refname:short)"
            refs/heads refs/tags)
  endif()
endif()
if(BRANCH STREQUAL "")
  set(BRANCH "unknown")
endif()

# The values stand between quotation marks in the header.
foreach(value BRANCH VERSION_SUFFIX)
  string(REPLACE "\\" "\\\\" ${value} "${${value}}")
  string(REPLACE "\"" "\\\"" ${value} "${${value}}")
endforeach()

# The day in the compiler's form, "Jan  1 2025": not the clock's but the commit's, so that two builds of
# a commit are the same. Who builds something else says so in SOURCE_DATE_EPOCH.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  if(identity MATCHES "seconds=([0-9]+)")
    set(ENV{SOURCE_DATE_EPOCH} "${CMAKE_MATCH_1}")
  elseif(head)
    ask_git(seconds show -s --format=%ct HEAD)
    set(ENV{SOURCE_DATE_EPOCH} "${seconds}")
  endif()
endif()
string(TIMESTAMP DATE "%b %d %Y" UTC)
string(REPLACE " 0" "  " DATE "${DATE}")

configure_file("${TEMPLATE}" "${HEADER}" @ONLY)
