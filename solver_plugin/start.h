#pragma once

#include "fmi_tools.h"
#include "solver_plugin/solver_core.h"

#include <cstddef>
#include <cstdint>

class ModelSetup;
class SimulationDataModel;

/// Start of a run: parameters, initialisation mode, and whether the FMU is what the user declared.
namespace solver_plugin {

/// Result for an FMU that is not of the kind declared with "-fmutype": the only failure after the
/// command line that reaches the host as an exception.
inline constexpr std::int32_t kindMismatch = -9999;

/// Starts the run of `core` with the parameters and the kind of its options.
///
/// @param core       options and FMU of the solver
/// @param model      not used
/// @param modelSetup not used
/// @return the result of startSolver()
/// @throws std::bad_alloc when memory runs out, with nothing done
std::int32_t startRun(const SolverCore& core, SimulationDataModel* model, ModelSetup* modelSetup);

/// Applies parameters, enters initialisation mode (FMI 2.0 section 4.2.1), and then checks the FMU's
/// kind: an FMU may compute its identification while it initialises.
///
/// The kind "FTIRE" asks for the tyre model's identification in the variable "fTireWorld.xmxKey";
/// an FMU of any other kind must not have that variable. A parameter that cannot be set is a
/// warning in the log. An FMU already started is left alone.
///
/// @param fmu      the handle; null is refused like a run in the wrong state
/// @param names    `count` names of FMU variables; null for none
/// @param values   their values as texts; null for none
/// @param count    number of parameters
/// @param kindText the kind that the user declared; must live as long as the call
/// @return 0; -1 in the wrong state; what fmiToolsStartInitialization() answered when it failed;
///         kindMismatch. Failures are logged and leave the state as it was.
std::int32_t startSolver(FmiToolsInstance* fmu, const char* const* names, const char* const* values,
                         std::size_t count, const char* kindText);

} // namespace solver_plugin
