# The page about building names every preset and every option there is, and none that is not; and the
# release notes begin with the version that is built.
#   cmake -D SOURCE_DIR=... -D VERSION=... -P check_building_page.cmake

file(READ "${SOURCE_DIR}/docs/building.md" page)

# rows_of(<variable> <heading>): the names in the first column of the table with that first heading.
function(rows_of variable heading)
  string(REGEX MATCH "\n[|] ${heading} [|][^\n]*\n[|][-|]*\n([|][^\n]*\n)*" table "${page}")
  string(REGEX MATCHALL "\n[|] `[A-Za-z_]+` " names "${table}")
  list(TRANSFORM names REPLACE "[^A-Za-z_]" "")
  list(SORT names)
  set(${variable} "${names}" PARENT_SCOPE)
endfunction()

function(expect_same what documented there)
  list(SORT there)
  if(NOT there OR NOT documented STREQUAL there)
    message(SEND_ERROR "docs/building.md names the ${what}\n  ${documented}\nand there are\n  ${there}")
  endif()
endfunction()

file(READ "${SOURCE_DIR}/CMakePresets.json" presets_file)
string(JSON count LENGTH "${presets_file}" configurePresets)
math(EXPR last "${count} - 1")
foreach(index RANGE ${last})
  string(JSON hidden ERROR_VARIABLE is_shown GET "${presets_file}" configurePresets ${index} hidden)
  if(is_shown)
    string(JSON name GET "${presets_file}" configurePresets ${index} name)
    list(APPEND presets "${name}")
  endif()
endforeach()
rows_of(documented "Preset")
expect_same(presets "${documented}" "${presets}")

file(GLOB build_files "${SOURCE_DIR}/CMakeLists.txt" "${SOURCE_DIR}/*/CMakeLists.txt"
     "${SOURCE_DIR}/cmake/*.cmake")
foreach(file IN LISTS build_files)
  file(READ "${file}" text)
  string(REGEX MATCHALL "(option[(][A-Z_]+)|(set[(][A-Z_]+ [^()]* CACHE [A-Z])" found "${text}")
  foreach(declaration IN LISTS found)
    string(REGEX MATCH "[(][A-Z_]+" name "${declaration}")
    string(SUBSTRING "${name}" 1 -1 name)
    list(APPEND options "${name}")
  endforeach()
endforeach()
rows_of(documented "CMake variable")
expect_same(options "${documented}" "${options}")

file(STRINGS "${SOURCE_DIR}/CHANGELOG.md" releases REGEX "^## \\[[0-9]")
list(GET releases 0 newest)
if(NOT newest MATCHES "^## \\[${VERSION}\\] ")
  message(SEND_ERROR "The version is ${VERSION}, but CHANGELOG.md begins with ${newest}")
endif()
