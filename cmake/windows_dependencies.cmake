# The libraries of a cross build for Windows. zlib comes from its MinGW package; what is compiled comes
# from Debian's source packages; what is headers only is copied from its Debian package, because
# /usr/include as a whole is Linux's.

set(ZLIB_USE_STATIC_LIBS ON)
find_package(ZLIB REQUIRED)
include(debian_sources)

file(COPY /usr/include/CLI /usr/include/nlohmann DESTINATION "${PROJECT_BINARY_DIR}/debian_headers")
foreach(library CLI11::CLI11 nlohmann_json::nlohmann_json)
  add_library(${library} INTERFACE IMPORTED)
  target_include_directories(${library} SYSTEM INTERFACE "${PROJECT_BINARY_DIR}/debian_headers")
endforeach()

if(FMI_SOLVER_TESTS)
  set(INSTALL_GTEST OFF)
  add_subdirectory("${sources}/googletest" "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)

  # Its own build file wants to ask git for its version.
  file(GLOB benchmark_sources "${sources}/benchmark/src/*.cc")
  list(FILTER benchmark_sources EXCLUDE REGEX benchmark_main)
  add_foreign_library(benchmark ${benchmark_sources})
  target_include_directories(benchmark SYSTEM PUBLIC "${sources}/benchmark/include")
  target_compile_definitions(benchmark PRIVATE HAVE_STD_REGEX HAVE_STEADY_CLOCK
                                       PUBLIC BENCHMARK_STATIC_DEFINE)
  target_link_libraries(benchmark PUBLIC shlwapi)
endif()
