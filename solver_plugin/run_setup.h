#pragma once

#include "fmi_tools.h"
#include "solver_plugin/solver_core.h"

#include <cstdint>
#include <string>

/// Set-up of a run: its files, the FMU, the first lines of the log.
namespace solver_plugin {

/// Loads the FMU named in the options of `core` and stores its handle there. Log and results files
/// are named after the FMU, and the instance name where there is one, and go into the directory in
/// the environment variable "TEST_OUTPUT_PATH", else into the working directory.
///
/// The run has the directory that it unpacks into for itself until its FMU is ended. Where another
/// run has that, it takes a folder with a number; a line on standard output and one of the log say
/// so.
///
/// @param core             options in, handle (null on failure) and names of the files out
/// @param workingDirectory directory into which the FMU is unpacked
/// @param scriptDirectory  directory of the clean-up script, with its closing separator
/// @return 0, or -1 when openFmu() failed
/// @throws std::bad_alloc when memory runs out, with nothing loaded
std::int32_t openRun(SolverCore& core, const std::string& workingDirectory,
                     const std::string& scriptDirectory);

/// Loads an FMU and opens its files; debug lines are on when the environment variable
/// "FMI_PLUGIN_DEBUG_LOGS" is set. The run is then in state `created`.
///
/// Where another run has one of the files, both get the next free number, and a line on standard
/// output and one of the log say so.
///
/// @param includeLocal not used
/// @param files        receives the names of the opened files
/// @return the handle, or null when the FMU could not be loaded or the results could not be set up
/// @throws std::bad_alloc when memory runs out, with nothing loaded
FmiToolsInstance* openFmu(const std::string& fmuPath, const std::string& workingDirectory,
                          const std::string& logFile, const std::string& resultsFile,
                          const std::string& scriptDirectory, bool includeLocal, RunFiles& files);

} // namespace solver_plugin
