#include "host/solver.h"

#include "host/logger.h"
#include "reference_host/argument_list.h"
#include "reference_host/host_state.h"

struct Solver::State {
    ModelManager* modelManager = nullptr;
    reference_host::ArgumentList arguments;
};

Solver::Solver() : state_(new State) {}

Solver::~Solver() {
    delete state_;
}

void Solver::setModelManager(ModelManager* modelManager) {
    state_->modelManager = modelManager;
}

ModelManager* Solver::getModelManager() const {
    return state_->modelManager;
}

SolverSettings* Solver::getSolverSettings() const {
    ModelManager* manager = getModelManager();
    return manager == nullptr ? nullptr : &manager->state_.solverSettings.object;
}

SolutionSettings* Solver::getSolutionSettings() const {
    ModelManager* manager = getModelManager();
    return manager == nullptr ? nullptr : &manager->state_.solution.state.settings.object;
}

SimulationDataModel* Solver::getMyModel() const {
    ModelManager* manager = getModelManager();
    return manager == nullptr ? nullptr : &manager->state_.model;
}

ModelSetup* Solver::getModelSetup() const {
    ModelManager* manager = getModelManager();
    return manager == nullptr ? nullptr : &manager->state_.modelSetup.object;
}

void Solver::convertToArgcArgv(const char* commandLine, int& argc, char**& argv) {
    state_->arguments = reference_host::ArgumentList(commandLine == nullptr ? "" : commandLine);
    argc = state_->arguments.count();
    argv = state_->arguments.values();
}

void Solver::debugPrintArgcArgv(int argc, char** argv) const {
    for (int i = 0; i < argc; ++i) {
        Logger::get()->log(Logger::debug, "argv[" + std::to_string(i) + "]: " + argv[i]);
    }
}
