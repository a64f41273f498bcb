# What an installation holds, and the archives that cpack makes of it: libraries and programs, the public
# headers and those of the host framework, a CMake package (find_package(fmi_tools)), the example FMUs, the manual, and the
# licences of all that is linked into the binaries.

if(FMI_SOLVER_FUZZ) # This tree has but the fuzz targets.
  return()
endif()

include(CMakePackageConfigHelpers)

set(package_directory "${CMAKE_INSTALL_LIBDIR}/cmake/fmi_tools")
set(licence_directory "${CMAKE_INSTALL_DOCDIR}/licences")

# The libraries that a consumer links with, and the shared libraries that those need.
set(libraries fmi_tools fmi_solver)
if(TARGET fmilib_shared)
  list(APPEND libraries fmilib_shared)
endif()
if(NOT HOST_FRAMEWORK_LIBRARY)
  list(APPEND libraries host_framework)
endif()
install(TARGETS ${libraries} EXPORT fmi_tools
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
set(programs fmu_run)
if(TARGET cosim_host)
  list(APPEND programs cosim_host)
endif()
install(TARGETS ${programs} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
install(FILES include/fmi_tools.h include/create_solver.h DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
if(NOT HOST_FRAMEWORK_LIBRARY) # A real host brings its own.
  file(GLOB host_headers "${PROJECT_SOURCE_DIR}/host/*.h")
  install(FILES ${host_headers} DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/host")
endif()

install(EXPORT fmi_tools NAMESPACE fmi_tools:: FILE fmi_tools-targets.cmake
        DESTINATION "${package_directory}")
configure_package_config_file(cmake/fmi_tools-config.cmake.in
  "${PROJECT_BINARY_DIR}/fmi_tools-config.cmake" INSTALL_DESTINATION "${package_directory}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/fmi_tools-config-version.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/fmi_tools-config.cmake"
              "${PROJECT_BINARY_DIR}/fmi_tools-config-version.cmake"
        DESTINATION "${package_directory}")

foreach(fmu tyre shock_absorber)
  install(FILES "${FMI_SOLVER_FMU_DIRECTORY}/${fmu}.fmu"
          DESTINATION "${CMAKE_INSTALL_DATADIR}/fmi_tools/fmus")
endforeach()
install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}"
        PATTERN CMakeLists.txt EXCLUDE PATTERN Doxyfile.in EXCLUDE)
install(FILES README.md CHANGELOG.md LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}")

# What a dynamic library of the system brings comes with its own licence; these are linked into ours.
if(CMAKE_CROSSCOMPILING AND WIN32)
  foreach(package pugixml minizip)
    install(FILES "${PROJECT_BINARY_DIR}/debian_sources/${package}/debian/copyright"
            DESTINATION "${licence_directory}" RENAME "${package}.txt")
  endforeach()
  set(debian_packages libz-mingw-w64-dev libcli11-dev nlohmann-json3-dev mingw-w64-common gcc-mingw-w64-base)
elseif(VCPKG_INSTALLED_DIR)
  install(DIRECTORY "${VCPKG_INSTALLED_DIR}/${VCPKG_TARGET_TRIPLET}/share/"
          DESTINATION "${licence_directory}" FILES_MATCHING PATTERN copyright)
else()
  set(debian_packages libcli11-dev nlohmann-json3-dev)
endif()
foreach(package IN LISTS debian_packages)
  set(licence "/usr/share/doc/${package}/copyright")
  if(EXISTS "${licence}")
    install(FILES "${licence}" DESTINATION "${licence_directory}" RENAME "${package}.txt")
  else()
    message(STATUS "Licences: ${licence} is not here; a package made from this tree lacks it")
  endif()
endforeach()

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(platform windows)
else()
  set(CPACK_GENERATOR TGZ)
  set(platform linux)
endif()
set(CPACK_PACKAGE_FILE_NAME "${PROJECT_NAME}-${PROJECT_VERSION}-${platform}-x86_64")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
