# Finds minizip, the archive reader that comes with zlib, and defines MINIZIP::minizip. A build that
# brings its own defines that target before it asks.

if(TARGET MINIZIP::minizip)
  set(minizip_FOUND TRUE)
else()
  find_package(ZLIB REQUIRED)
  find_path(minizip_INCLUDE_DIR NAMES minizip/unzip.h)
  find_library(minizip_LIBRARY NAMES minizip)
  mark_as_advanced(minizip_INCLUDE_DIR minizip_LIBRARY)

  include(FindPackageHandleStandardArgs)
  find_package_handle_standard_args(minizip REQUIRED_VARS minizip_LIBRARY minizip_INCLUDE_DIR)

  if(minizip_FOUND)
    add_library(MINIZIP::minizip UNKNOWN IMPORTED)
    set_target_properties(MINIZIP::minizip PROPERTIES
      IMPORTED_LOCATION "${minizip_LIBRARY}"
      INTERFACE_INCLUDE_DIRECTORIES "${minizip_INCLUDE_DIR}"
      INTERFACE_LINK_LIBRARIES ZLIB::ZLIB)
  endif()
endif()
