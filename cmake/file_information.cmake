# add_file_information(<target> <description>): what Windows shows of a program or DLL under Properties,
# Details: name, version, description and licence. Nothing on other platforms.

file(STRINGS "${PROJECT_SOURCE_DIR}/LICENSE" licence_lines LENGTH_MINIMUM 1 LIMIT_COUNT 2)
list(JOIN licence_lines ". " FMI_SOLVER_LICENCE_LINE)

function(add_file_information target description)
  if(NOT WIN32)
    return()
  endif()
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "EXECUTABLE")
    set(file_type VFT_APP)
    set(file_name "${target}.exe")
  else()
    set(file_type VFT_DLL)
    set(file_name "${target}.dll")
  endif()
  set(licence "${FMI_SOLVER_LICENCE_LINE}")
  set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}_information.rc")
  configure_file("${PROJECT_SOURCE_DIR}/cmake/file_information.rc.in" "${script}" @ONLY)
  target_sources(${target} PRIVATE "${script}")
endfunction()
