# add_workload(<name> [INPUTS n] [OUTPUTS n] [PARAMETERS n] [LOCALS n] [VECTORS]): builds and packs
# ${FMI_SOLVER_FMU_DIRECTORY}/workload_<name>.fmu, whose variables are all Reals. VECTORS names inputs
# and outputs as elements of vectors of three.
#
# The model description is written while building, because the largest takes a few seconds.
function(add_workload name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "VECTORS" "INPUTS;OUTPUTS;PARAMETERS;LOCALS" "")
  set(slave workload_${name})
  set(counts "")
  foreach(kind INPUTS OUTPUTS PARAMETERS LOCALS)
    if(NOT arg_${kind})
      set(arg_${kind} 0)
    endif()
    list(APPEND counts ${kind}=${arg_${kind}})
  endforeach()
  string(UUID guid NAMESPACE "6ba7b810-9dad-11d1-80b4-00c04fd430c8" NAME "${name} ${counts}"
         TYPE SHA1)

  add_library(${slave} MODULE workload_slave.cpp)
  target_link_libraries(${slave} PRIVATE project_settings slave_base slave_omissible)
  target_compile_definitions(${slave} PRIVATE "FMU_GUID=\"{${guid}}\"" ${counts})
  target_link_options(${slave} PRIVATE $<$<BOOL:${MINGW}>:-static>)
  limit_exports(${slave} "${PROJECT_SOURCE_DIR}/example_fmus/exports.map")
  set_target_properties(${slave} PROPERTIES
    PREFIX "" LIBRARY_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/slaves$<0:>")

  set(stage "${CMAKE_CURRENT_BINARY_DIR}/content/${name}")
  set(writer "${CMAKE_CURRENT_SOURCE_DIR}/write_model_description.cmake")
  list(TRANSFORM counts PREPEND -D OUTPUT_VARIABLE definitions)
  add_custom_command(OUTPUT "${stage}/modelDescription.xml"
    COMMAND ${CMAKE_COMMAND} ${definitions} -DVECTORS=${arg_VECTORS} -DIDENTIFIER=${slave}
            "-DGUID={${guid}}" "-DFILE=${stage}/modelDescription.xml" -P "${writer}"
    DEPENDS "${writer}" VERBATIM)

  set(archive "${FMI_SOLVER_FMU_DIRECTORY}/${slave}.fmu")
  set(binaries "${stage}/binaries/${FMU_PLATFORM}")
  add_custom_command(OUTPUT "${archive}"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${binaries}" "${FMI_SOLVER_FMU_DIRECTORY}"
    COMMAND ${CMAKE_COMMAND} -E copy "$<TARGET_FILE:${slave}>" "${binaries}"
    COMMAND ${CMAKE_COMMAND} -E chdir "${stage}"
            ${CMAKE_COMMAND} -E tar cf "${archive}" --format=zip .
    DEPENDS ${slave} "${stage}/modelDescription.xml" COMMENT "Packing ${slave}.fmu" VERBATIM)
  add_custom_target(${slave}_fmu ALL DEPENDS "${archive}")
endfunction()
