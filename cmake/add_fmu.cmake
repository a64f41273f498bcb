# Builds and packs FMUs. An FMU holds the binary of the platform that is being built for.
#
# add_fmu(<name> SOURCES <file>... MODEL_DESCRIPTION <file> [LIBRARIES <target>...])
#   Builds the slave <name> and packs it as ${FMI_SOLVER_FMU_DIRECTORY}/<name>.fmu.
#
# add_slave(<name> SOURCES <file>... MODEL_DESCRIPTION <file> [LIBRARIES <target>...])
#   The binary alone. The sources see the GUID of the model description as FMU_GUID.
#
# pack_fmu(<fmu> SLAVE <name> [PLATFORM <folder>] [BESIDE <target>...] [KINDS <xml>])
#   The archive alone, so that several FMUs share one binary: in the folder of PLATFORM instead of
#   its own, with the libraries of BESIDE next to it, with KINDS as additional kind of FMU.
#
# A model description is a template with @FMU_IDENTIFIER@, @FMU_GUID@, @FMU_KINDS@ and
# @PROJECT_VERSION@.

if(WIN32)
  set(FMU_PLATFORM win64)
  set(FMU_OTHER_PLATFORM linux64)
else()
  set(FMU_PLATFORM linux64)
  set(FMU_OTHER_PLATFORM win64)
endif()

if(FMI_SOLVER_COVERAGE)
  # In a folder of FMUs nothing counts: an FMU would write its counters when it is unloaded, amid the
  # faults that tests arrange.
  get_property(options DIRECTORY PROPERTY COMPILE_OPTIONS)
  list(REMOVE_ITEM options ${FMI_SOLVER_COUNTING})
  set_property(DIRECTORY PROPERTY COMPILE_OPTIONS ${options})
endif()

function(add_slave name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "MODEL_DESCRIPTION" "SOURCES;LIBRARIES")
  get_filename_component(description "${arg_MODEL_DESCRIPTION}" ABSOLUTE)

  # The GUID follows the content: a changed model description is another FMU.
  file(SHA256 "${description}" content)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${description}")
  string(UUID guid NAMESPACE "6ba7b810-9dad-11d1-80b4-00c04fd430c8" NAME "${content}" TYPE SHA1)

  add_library(${name} MODULE ${arg_SOURCES})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE project_settings ${arg_LIBRARIES})
  target_compile_definitions(${name} PRIVATE "FMU_GUID=\"{${guid}}\"")
  # A simulation tool has none of MinGW's own DLLs.
  target_link_options(${name} PRIVATE "$<$<BOOL:${MINGW}>:-static;-s>")
  limit_exports(${name} "${PROJECT_SOURCE_DIR}/example_fmus/exports.map")
  add_file_information(${name} "FMI 2.0 Co-Simulation FMU")
  set_target_properties(${name} PROPERTIES
    PREFIX "" FMU_GUID "{${guid}}" FMU_MODEL_DESCRIPTION "${description}"
    LIBRARY_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/slaves$<0:>")
endfunction()

function(pack_fmu fmu)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "SLAVE;PLATFORM;KINDS" "BESIDE")
  set(platform "${FMU_PLATFORM}")
  if(arg_PLATFORM)
    set(platform "${arg_PLATFORM}")
  endif()
  set(stage "${CMAKE_CURRENT_BINARY_DIR}/content/${fmu}")
  set(archive "${FMI_SOLVER_FMU_DIRECTORY}/${fmu}.fmu")

  set(FMU_IDENTIFIER "${arg_SLAVE}")
  set(FMU_KINDS "${arg_KINDS}")
  get_target_property(FMU_GUID ${arg_SLAVE} FMU_GUID)
  get_target_property(description ${arg_SLAVE} FMU_MODEL_DESCRIPTION)
  configure_file("${description}" "${stage}.xml" @ONLY NEWLINE_STYLE UNIX)

  set(binaries "")
  set(names "")
  foreach(library ${arg_SLAVE} ${arg_BESIDE})
    list(APPEND binaries "$<TARGET_FILE:${library}>")
    list(APPEND names "binaries/${platform}/$<TARGET_FILE_NAME:${library}>")
  endforeach()

  add_custom_command(OUTPUT "${archive}"
    COMMAND ${CMAKE_COMMAND} -E rm -rf "${stage}"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${stage}/binaries/${platform}"
                                               "${FMI_SOLVER_FMU_DIRECTORY}"
    COMMAND ${CMAKE_COMMAND} -E copy "${stage}.xml" "${stage}/modelDescription.xml"
    COMMAND ${CMAKE_COMMAND} -E copy ${binaries} "${stage}/binaries/${platform}"
    COMMAND pack_fmu "${archive}" "${stage}" modelDescription.xml ${names}
    DEPENDS pack_fmu ${arg_SLAVE} ${arg_BESIDE} "${stage}.xml"
    COMMENT "Packing ${fmu}.fmu" VERBATIM)
  add_custom_target(${fmu}_fmu ALL DEPENDS "${archive}")
endfunction()

function(add_fmu name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "MODEL_DESCRIPTION" "SOURCES;LIBRARIES")
  add_slave(${name} SOURCES ${arg_SOURCES} MODEL_DESCRIPTION "${arg_MODEL_DESCRIPTION}"
            LIBRARIES slave_base slave_omissible ${arg_LIBRARIES})
  pack_fmu(${name} SLAVE ${name})
endfunction()
