#include "solver_plugin/host_settings.h"

#include "data_exchange/required.h"
#include "host/model_manager.h"
#include "host/options.h"
#include "host/parameters.h"
#include "host/solution.h"
#include "host/solution_settings.h"
#include "host/solver.h"
#include "host/solver_settings.h"

namespace solver_plugin {

namespace {

using data_exchange::required;

// Each store of the host counts its settings on its own.
constexpr int workingDirectoryParameter = 1; // solver settings, text
constexpr int modelFilePathParameter = 2;    // solution, text
constexpr int statusParameter = 11;          // solution, integer
constexpr int stepSkipParameter = 12;        // solution, integer
constexpr int coupledOption = 1;             // solver settings
constexpr int stepSkipOption = 2;            // solution

SolutionSettings& solutionSettings(const Solver& solver) {
    const Solution& solution = required(required(solver.getModelManager()).getSolution());
    return required(solution.getSolutionSettings());
}

} // namespace

std::string workingDirectory(const Solver& solver) {
    const SolverSettings& settings = required(solver.getSolverSettings());
    return required(settings.getSolverSettingParameters())
        .getStringParameter(workingDirectoryParameter);
}

std::string modelFilePath(const Solver& solver) {
    const SolutionSettings& settings = required(solver.getSolutionSettings());
    return required(settings.getParameters()).getStringParameter(modelFilePathParameter);
}

bool isCoupled(const Solver& solver) {
    const SolverSettings& settings = required(solver.getSolverSettings());
    return required(settings.getSolverSettingOptions()).getOption(coupledOption);
}

bool isStepSkipped(const Solver& solver) {
    const SolutionSettings& settings = solutionSettings(solver);
    return required(settings.getOptions()).getOption(stepSkipOption) ||
           required(settings.getParameters()).getIntParameter(stepSkipParameter) != 0;
}

void writeStatus(const Solver& solver, int code) {
    required(solutionSettings(solver).getParameters()).setParameter(statusParameter, code);
}

} // namespace solver_plugin
