# Chooses where FMILibrary::FMILibrary comes from: the import library in fmi_import/, or an installed
# FMI Library, which has the same C interface. Only who asks for the installed one gets it: what a
# machine happens to have installed must not change what is built.

set(FMI_LIBRARY BUNDLED CACHE STRING "FMI Library to use: BUNDLED or SYSTEM")
set_property(CACHE FMI_LIBRARY PROPERTY STRINGS BUNDLED SYSTEM)

if(FMI_LIBRARY STREQUAL "SYSTEM")
  find_package(FMILibrary REQUIRED)
  look_for_libraries_beside("${FMILibrary_LIBRARY}")
  message(STATUS "FMI Library: ${FMILibrary_LIBRARY}")
elseif(FMI_LIBRARY STREQUAL "BUNDLED")
  message(STATUS "FMI Library: the bundled import library (fmi_import/)")
  add_subdirectory(fmi_import)
else()
  message(FATAL_ERROR "FMI_LIBRARY is '${FMI_LIBRARY}'; choose BUNDLED or SYSTEM")
endif()
