# Chooses where FMILibrary::FMILibrary comes from: an installed FMI Library, or the import library in
# fmi_import/, which offers the same C interface.

set(FMI_LIBRARY AUTO CACHE STRING "FMI Library to use: AUTO, SYSTEM or BUNDLED")
set_property(CACHE FMI_LIBRARY PROPERTY STRINGS AUTO SYSTEM BUNDLED)

if(FMI_LIBRARY STREQUAL "SYSTEM")
  find_package(FMILibrary REQUIRED)
elseif(FMI_LIBRARY STREQUAL "AUTO")
  find_package(FMILibrary QUIET)
elseif(NOT FMI_LIBRARY STREQUAL "BUNDLED")
  message(FATAL_ERROR "FMI_LIBRARY is '${FMI_LIBRARY}'; choose AUTO, SYSTEM or BUNDLED")
endif()

if(TARGET FMILibrary::FMILibrary)
  message(STATUS "FMI Library: ${FMILibrary_LIBRARY}")
else()
  message(STATUS "FMI Library: the bundled import library (fmi_import/)")
  add_project_folder(fmi_import)
endif()
