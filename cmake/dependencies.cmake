# The libraries from elsewhere, under one set of names on every platform:
#   pugixml::pugixml  minizip::minizip (<minizip/unzip.h>)  ZLIB::ZLIB  CLI11::CLI11
#   nlohmann_json::nlohmann_json  GTest::gtest_main  benchmark::benchmark (where it is installed)

if(CMAKE_CROSSCOMPILING AND WIN32)
  include(windows_dependencies)
  return()
endif()

find_package(CLI11 REQUIRED)
find_package(ZLIB REQUIRED)
find_package(nlohmann_json REQUIRED)
find_package(benchmark QUIET)
if(FMI_SOLVER_TESTS)
  find_package(GTest REQUIRED)
endif()

if(FMI_SOLVER_FUZZ) # A fuzzer gets through a parser that counts its branches, not past one that does not.
  include(debian_sources)
  return()
endif()

find_package(pugixml REQUIRED)

# minizip has a package file of its own only where vcpkg built it.
find_package(unofficial-minizip CONFIG QUIET)
if(TARGET unofficial::minizip::minizip)
  add_library(minizip::minizip ALIAS unofficial::minizip::minizip)
else()
  find_path(MINIZIP_INCLUDE_DIR minizip/unzip.h REQUIRED)
  find_library(MINIZIP_LIBRARY minizip REQUIRED)
  mark_as_advanced(MINIZIP_INCLUDE_DIR MINIZIP_LIBRARY)
  add_library(minizip::minizip UNKNOWN IMPORTED)
  set_target_properties(minizip::minizip PROPERTIES
    IMPORTED_LOCATION "${MINIZIP_LIBRARY}" INTERFACE_INCLUDE_DIRECTORIES "${MINIZIP_INCLUDE_DIR}"
    INTERFACE_LINK_LIBRARIES ZLIB::ZLIB)
endif()
