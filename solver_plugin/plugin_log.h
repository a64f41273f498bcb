#pragma once

#include "fmi_tools.h"
#include "fmu_runtime/log.h"

namespace solver_plugin {

/// Writes one line of the plug-in into the log of `fmu`, to standard output without one.
///
/// @param level     "OK", "Warning" or "Error"
/// @param format    as for printf, with its `arguments`
template <typename... Arguments>
void logLine(FmiToolsInstance* fmu, const char* level, const char* format, Arguments... arguments) {
    writeLogLine(fmu, "FMISolver", level, "None", format, arguments...);
}

} // namespace solver_plugin
