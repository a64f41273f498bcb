#pragma once

#include "fmi_tools.h"

#include <cstdint>

/// The steps of a run, and its end.
namespace solver_plugin {

/// Advances the FMU to a time; the first call takes it out of initialisation mode before.
///
/// @param fmu  the handle; null is refused like a run in the wrong state
/// @param time end of the step, seconds
/// @return 0; -1 in the wrong state; else what the failed fmiToolsEndInitialization() or
///         fmiToolsSimulateToT() answered. Failures are logged and leave the state as it was, so
///         that the next call tries again.
std::int32_t advanceSolver(FmiToolsInstance* fmu, double time);

/// Ends the run: frees its state and the FMU.
///
/// @param fmu the handle, not to be used afterwards; null does nothing
/// @return the result of fmiToolsCleanup()
std::int32_t stopSolver(FmiToolsInstance* fmu);

} // namespace solver_plugin
