# What every target of this project is compiled with, and where the build puts its artefacts:
# programs in bin/, libraries in lib/ (DLLs beside the programs), FMUs in fmus/.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(FMI_SOLVER_FMU_DIRECTORY "${PROJECT_BINARY_DIR}/fmus")

# Build tree and installation have the same layout and can be moved: libraries stand beside each other,
# programs find them from where they stand. Nothing is rewritten when it is installed, so nothing is
# reserved for that either: CMake would reserve empty entries, which mean the current directory.
if(NOT WIN32)
  set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
  set(CMAKE_INSTALL_RPATH "$ORIGIN" "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
endif()

# look_for_libraries_beside(<file>): what is defined from now on finds a library from elsewhere there.
macro(look_for_libraries_beside file)
  if(NOT WIN32)
    get_filename_component(library_directory "${file}" DIRECTORY)
    list(APPEND CMAKE_INSTALL_RPATH "${library_directory}")
  endif()
endmacro()

# A host exchanges strings and exceptions with the solver, so both have the C runtime's DLL, and its
# release variant: in every configuration, because the host has no other.
set(CMAKE_MSVC_RUNTIME_LIBRARY MultiThreadedDLL)
if(MSVC)
  set(CMAKE_MAP_IMPORTED_CONFIG_DEBUG Release RelWithDebInfo "")
endif()

if(WIN32)
  # The libraries have the same plain names whichever compiler made them.
  foreach(kind SHARED_LIBRARY SHARED_MODULE IMPORT_LIBRARY)
    set(CMAKE_${kind}_PREFIX "")
  endforeach()
  set(CMAKE_IMPORT_LIBRARY_SUFFIX ".lib")
endif()

if(WIN32 AND CMAKE_CROSSCOMPILING)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${PROJECT_SOURCE_DIR}/scripts/run_wine;${PROJECT_BINARY_DIR}/wine")
endif()

add_library(project_settings INTERFACE)
if(MSVC)
  target_compile_options(project_settings INTERFACE /W4 /permissive- /utf-8
    $<$<BOOL:${FMI_SOLVER_WARNINGS_AS_ERRORS}>:/WX>)
  target_compile_definitions(project_settings INTERFACE _CRT_SECURE_NO_WARNINGS NOMINMAX)
else()
  target_compile_options(project_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    $<$<BOOL:${FMI_SOLVER_WARNINGS_AS_ERRORS}>:-Werror>
    # GCC 12 sees overlapping copies in any "literal" + std::string.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
endif()
include(hardening)
include(reproducible)
if(WIN32)
  # Narrow texts are UTF-8 in our programs, whatever code page the machine is set to: a manifest in
  # the program says so.
  set(manifest "${PROJECT_SOURCE_DIR}/cmake/utf8_process.$<IF:$<BOOL:${MSVC}>,manifest,rc>")
  target_sources(project_settings INTERFACE
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:${manifest}>)
  target_include_directories(project_settings INTERFACE
    $<$<COMPILE_LANGUAGE:RC>:${PROJECT_SOURCE_DIR}/cmake>)
endif()
if(FMI_SOLVER_SANITIZE)
  # Every artefact is instrumented, the FMUs included: a sanitizer sees only what it compiled.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  if(FMI_SOLVER_FUZZ)
    # An FMU and its caller have the same C functions under type names of their own.
    add_compile_options(-fsanitize=fuzzer-no-link -fno-sanitize=function)
  endif()
endif()

# limit_exports(<target> <version script>): on ELF a library exports what its list names and nothing
# that a static library or the C++ runtime would add; on Windows the export macros say the same.
function(limit_exports target version_script)
  if(NOT WIN32)
    target_link_options(${target} PRIVATE "LINKER:--version-script=${version_script}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${version_script}")
  endif()
endfunction()
