# Finds FMI Library (its shared library and <fmilib.h>) and defines FMILibrary::FMILibrary.
#
# Looks below FMILibrary_ROOT (CMake or environment variable), then below the environment variables
# FMIL_HOME and FMILIB_HOME, then in the system's places.
#
# Result variables: FMILibrary_FOUND, FMILibrary_INCLUDE_DIR, FMILibrary_LIBRARY.

set(_fmilibrary_hints ENV FMIL_HOME ENV FMILIB_HOME)

find_path(FMILibrary_INCLUDE_DIR NAMES fmilib.h HINTS ${_fmilibrary_hints} PATH_SUFFIXES include)
find_library(FMILibrary_LIBRARY NAMES fmilib_shared libfmilib_shared
             HINTS ${_fmilibrary_hints} PATH_SUFFIXES lib)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(FMILibrary
  REQUIRED_VARS FMILibrary_LIBRARY FMILibrary_INCLUDE_DIR)
mark_as_advanced(FMILibrary_INCLUDE_DIR FMILibrary_LIBRARY)

if(FMILibrary_FOUND AND NOT TARGET FMILibrary::FMILibrary)
  add_library(FMILibrary::FMILibrary UNKNOWN IMPORTED)
  set_target_properties(FMILibrary::FMILibrary PROPERTIES
    IMPORTED_LOCATION "${FMILibrary_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${FMILibrary_INCLUDE_DIR}")
endif()
