#include "solver_plugin/host_settings.h"

#include "host/model_manager.h"
#include "host/options.h"
#include "host/parameters.h"
#include "host/required.h"
#include "host/setting_indices.h"
#include "host/solution.h"
#include "host/solution_settings.h"
#include "host/solver.h"
#include "host/solver_settings.h"

namespace solver_plugin {

using host::required;

namespace {

const SolverSettings& solverSettings(const Solver& solver) {
    return required(solver.getSolverSettings(), "solver settings");
}

/// The run's settings as a solver finds them by itself.
const SolutionSettings& ownSolutionSettings(const Solver& solver) {
    return required(solver.getSolutionSettings(), "solution settings");
}

/// The run's settings by way of the model manager.
const SolutionSettings& solutionSettings(const Solver& solver) {
    const ModelManager& manager = required(solver.getModelManager(), "model manager");
    const Solution& solution = required(manager.getSolution(), "solution");
    return required(solution.getSolutionSettings(), "solution settings");
}

Parameters& parametersOf(const SolutionSettings& settings) {
    return required(settings.getParameters(), "solution parameters");
}

} // namespace

std::string workingDirectory(const Solver& solver) {
    const Parameters& parameters =
        required(solverSettings(solver).getSolverSettingParameters(), "solver parameters");
    return parameters.getStringParameter(host::solver_parameter::workingDirectory);
}

std::string modelFilePath(const Solver& solver) {
    return parametersOf(ownSolutionSettings(solver))
        .getStringParameter(host::solution_parameter::modelFilePath);
}

bool isCoupled(const Solver& solver) {
    const Options& options =
        required(solverSettings(solver).getSolverSettingOptions(), "solver options");
    return options.getOption(host::solver_option::coupled);
}

bool isStepSkipped(const Solver& solver) {
    const SolutionSettings& settings = solutionSettings(solver);
    const Options& options = required(settings.getOptions(), "solution options");
    return options.getOption(host::solution_option::stepSkip) ||
           parametersOf(settings).getIntParameter(host::solution_parameter::stepSkip) != 0;
}

void writeStatus(const Solver& solver, int code) {
    parametersOf(solutionSettings(solver)).setParameter(host::solution_parameter::status, code);
}

void writeSetUpStatus(const Solver& solver, int code) {
    parametersOf(ownSolutionSettings(solver)).setParameter(host::solution_parameter::status, code);
}

} // namespace solver_plugin
