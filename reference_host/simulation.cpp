#include "reference_host/simulation.h"

#include "host/setting_indices.h"
#include "reference_host/host_state.h"

namespace reference_host {

namespace solver_parameter = host::solver_parameter;
namespace solver_option = host::solver_option;
namespace solution_parameter = host::solution_parameter;
namespace solution_option = host::solution_option;

struct Simulation::Objects {
    Owned<ModelManager> manager;

    SolutionSettings::State& solution() { return manager.state.solution.state.settings.state; }

    SolverSettings::State& solver() { return manager.state.solverSettings.state; }

    ModelSetup::State& modelSetup() { return manager.state.modelSetup.state; }
};

Simulation::Simulation() : objects_(std::make_unique<Objects>()) {}

Simulation::~Simulation() = default;

ModelManager* Simulation::modelManager() {
    return &objects_->manager.object;
}

void Simulation::setWorkingDirectory(const std::string& directory) {
    objects_->solver().parameters.state.texts[solver_parameter::workingDirectory] = directory;
}

void Simulation::setCommandLine(const std::string& commandLine) {
    objects_->solver().parameters.state.texts[solver_parameter::commandLine] = commandLine;
}

void Simulation::setModelFilePath(const std::string& path) {
    objects_->solution().parameters.state.texts[solution_parameter::modelFilePath] = path;
}

void Simulation::setCoupled(bool coupled) {
    objects_->solver().options.state.switches[solver_option::coupled] = coupled;
}

void Simulation::setStepSkipOption(bool skip) {
    objects_->solution().options.state.switches[solution_option::stepSkip] = skip;
}

void Simulation::setStepSkipParameter(bool skip) {
    objects_->solution().parameters.state.integers[solution_parameter::stepSkip] = skip ? 1 : 0;
}

void Simulation::withholdSolution() {
    objects_->manager.state.solutionWithheld = true;
}

int Simulation::failureCode() const {
    return objects_->solution().parameters.object.getIntParameter(solution_parameter::status);
}

void Simulation::resetFailureCode() {
    objects_->solution().parameters.object.setParameter(solution_parameter::status, 0);
}

TupleArray<double>& Simulation::addCoupledCondition(const std::string& name, int size) {
    auto& added = objects_->modelSetup().coupledConditions.emplace_back(
        std::make_unique<Owned<CoupledCondition>>(name, name, size));
    return added->state.result.state.values;
}

TupleArray<double>& Simulation::addOutputResult(const std::string& name,
                                                const std::string& quantity, int size) {
    auto& added = objects_->modelSetup().outputResults.emplace_back(
        std::make_unique<Owned<OutputResult>>(name, quantity, size));
    return added->state.result.state.values;
}

} // namespace reference_host
