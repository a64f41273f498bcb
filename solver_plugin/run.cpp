#include "solver_plugin/run.h"

#include "solver_plugin/plugin_log.h"
#include "solver_plugin/run_state.h"

namespace solver_plugin {

namespace {

/// Takes the FMU out of initialisation mode when it is still in it.
std::int32_t finishInitialisation(FmiToolsInstance* fmu) {
    const auto permission = mayInitialise(fmu);
    if (permission.result < 0) {
        logLine(fmu, "Error", "Cannot initialise as solver state is: %s", stateText(fmu));
        return permission.result;
    }
    if (!permission.granted) {
        return 0;
    }
    const std::int32_t result = fmiToolsEndInitialization(fmu);
    if (result != 0) {
        logLine(fmu, "Error", "Failed to initialise FMU");
        return result;
    }
    setState(fmu, SolverState::initialised);
    logLine(fmu, "OK", "Initialised FMU");
    return 0;
}

} // namespace

std::int32_t advanceSolver(FmiToolsInstance* fmu, double time) {
    std::int32_t result = finishInitialisation(fmu);
    if (result != 0) {
        return result;
    }
    const auto permission = maySolve(fmu);
    if (permission.result < 0) {
        logLine(fmu, "Error", "Cannot solve as solver state is: %s", stateText(fmu));
        return permission.result;
    }
    result = fmiToolsSimulateToT(fmu, time);
    if (result != 0) {
        logLine(fmu, "Error", "Failed to simulate to t=%f", time);
        return result;
    }
    setState(fmu, SolverState::simulating);
    return 0;
}

std::int32_t stopSolver(FmiToolsInstance* fmu) {
    freeRunState(fmu);
    return fmiToolsCleanup(fmu);
}

} // namespace solver_plugin
