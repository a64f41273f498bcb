# Which branch, commit and day the build says it was made from, whatever state the checkout is in:
#   cmake -DGIT=<program> -DSOURCE_DIR=<dir> -DWORK=<dir> -P check_build_values.cmake

unset(ENV{SOURCE_DATE_EPOCH})
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/cmake")
file(COPY "${SOURCE_DIR}/cmake/source_identity.txt" DESTINATION "${WORK}/cmake")

function(git)
  execute_process(COMMAND "${GIT}" -C "${WORK}" -c user.name=test -c user.email=test@localhost ${ARGN}
                  OUTPUT_QUIET ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# expect(<constant> <text of the literal>): what the header holds for the checkout as it is now.
function(expect constant literal)
  execute_process(COMMAND "${CMAKE_COMMAND}" "-DSOURCE_DIRECTORY=${WORK}" "-DGIT=${GIT}" -DVERSION=1.0.0
      "-DVERSION_SUFFIX=-a\\b\"" "-DTEMPLATE=${SOURCE_DIR}/run_config/build_values.h.in"
      "-DHEADER=${WORK}/build_values.h" -P "${SOURCE_DIR}/cmake/write_build_values.cmake"
    COMMAND_ERROR_IS_FATAL ANY)
  file(READ "${WORK}/build_values.h" header)
  string(FIND "${header}" " ${constant} = \"${literal}\";" position)
  if(position EQUAL -1)
    message(FATAL_ERROR "${constant} is not \"${literal}\":\n${header}")
  endif()
endfunction()

git(init --quiet)
git(checkout --quiet -b main)
git(commit --quiet --allow-empty -m first)
expect(branch "main")
expect(versionSuffix "-a\\\\b\\\"")
git(checkout --quiet -b "say\"so\"/@VERSION@$x")
expect(branch "say\\\"so\\\"/@VERSION@$x")
git(checkout --quiet --detach main)
git(commit --quiet --allow-empty -m second)
expect(branch "unknown")
git(tag v1.0)
expect(branch "v1.0")

foreach(refs_and_name "HEAD -> say\"so, tag: v1.0=say\\\"so" "HEAD, tag: v1.0, main=v1.0" "main=main"
                      "HEAD=unknown" "=unknown")
  string(REGEX MATCH "^(.*)=(.*)$" parts "${refs_and_name}")
  set(name "${CMAKE_MATCH_2}")
  file(WRITE "${WORK}/cmake/source_identity.txt" "commit=0123456789abcdef\nrefs=${CMAKE_MATCH_1}\nseconds=1735700000\n")
  expect(commit "0123456")
  expect(date "Jan  1 2025")
  expect(branch "${name}")
endforeach()
