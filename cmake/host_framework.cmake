# Chooses the host framework that the solver is built for: the reference host, with the declarations of
# host/, or a real one with headers and a library of its own. Of a real one's classes the solver uses
# the operations that host/ declares, and the level Logger::info.

set(HOST_FRAMEWORK_LIBRARY "" CACHE FILEPATH
    "Library of the host framework to link the solver with; empty for the reference host")
set(HOST_FRAMEWORK_INCLUDE_DIR "" CACHE PATH
    "Directory in which the host framework's headers have the names of ours, host/solver.h and so on")

if(HOST_FRAMEWORK_LIBRARY AND NOT EXISTS "${HOST_FRAMEWORK_INCLUDE_DIR}/host/solver.h")
  message(FATAL_ERROR "HOST_FRAMEWORK_LIBRARY is given, but HOST_FRAMEWORK_INCLUDE_DIR/host/solver.h "
                      "is not there: a library and headers of another host do not fit together")
elseif(HOST_FRAMEWORK_INCLUDE_DIR AND NOT HOST_FRAMEWORK_LIBRARY)
  message(FATAL_ERROR "HOST_FRAMEWORK_INCLUDE_DIR is given, but HOST_FRAMEWORK_LIBRARY is not")
endif()

if(HOST_FRAMEWORK_LIBRARY)
  # Before every directory of a target, so that its headers are found instead of ours.
  include_directories(BEFORE "${HOST_FRAMEWORK_INCLUDE_DIR}")
  look_for_libraries_beside("${HOST_FRAMEWORK_LIBRARY}")
  message(STATUS "Host framework: ${HOST_FRAMEWORK_LIBRARY}")
endif()
