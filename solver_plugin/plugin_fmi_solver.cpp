#include "solver_plugin/plugin_fmi_solver.h"

#include "create_solver.h"
#include "data_exchange/inputs.h"
#include "data_exchange/outputs.h"
#include "data_exchange/required.h"
#include "host/logger.h"
#include "host/parameters.h"
#include "host/solver_settings.h"
#include "run_config/build_information.h"
#include "run_config/console.h"
#include "solver_plugin/host_settings.h"
#include "solver_plugin/run.h"
#include "solver_plugin/run_paths.h"
#include "solver_plugin/run_setup.h"
#include "solver_plugin/start.h"

#include <new>
#include <stdexcept>
#include <utility>

namespace solver_plugin {

namespace {

using data_exchange::required;

constexpr int commandLineParameter = 3;

/// The codes that tell the host what failed.
constexpr int outputFailure = 3;
constexpr int preparationFailure = 4;
constexpr int runFailure = 5;

/// Runs `operation`; what it throws becomes a negative result, because hosts are only prepared for
/// an FMU of the wrong kind.
template <typename Operation>
std::int32_t guarded(Operation operation) {
    try {
        return operation();
    } catch (const KindMismatch&) {
        throw;
    } catch (...) {
        return -1;
    }
}

/// Runs `operation` and reports a negative result to the host as `failureCode`.
template <typename Operation>
void runOperation(const Solver& solver, int failureCode, Operation operation) {
    if (guarded(operation) < 0) {
        guarded([&] {
            writeStatus(solver, failureCode);
            return 0;
        });
    }
}

/// runOperation() for the operations of a step, which the host can switch off.
template <typename Operation>
void runStepOperation(const Solver& solver, int failureCode, Operation operation) {
    runOperation(solver, failureCode, [&] { return isStepSkipped(solver) ? 0 : operation(); });
}

std::unique_ptr<SolverCore> createCore() {
    try {
        return std::make_unique<SolverCore>();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

const Parameters& settingParameters(const Solver& solver) {
    const auto* settings = solver.getSolverSettings();
    const auto* parameters = settings == nullptr ? nullptr : settings->getSolverSettingParameters();
    if (parameters == nullptr) {
        throw std::runtime_error(
            "Unable to parse command line - command line arguments unavailable");
    }
    return *parameters;
}

} // namespace

PluginFmiSolver::PluginFmiSolver() : core_(createCore()) {}

SolverCore& PluginFmiSolver::core() const {
    return required(core_.get());
}

void PluginFmiSolver::printBanner() {
    guarded([] {
        Logger& logger = required(Logger::get());
        constexpr auto level = static_cast<Logger::Level>(3);
        logger.log(level, "FMISolver " + run_config::buildText(run_config::buildValues()));
        logger.log(level, "FMISolver " + run_config::environmentText(run_config::toolChain()));
        return 0;
    });
}

void PluginFmiSolver::parseCommandLine(ModelManager* modelManager) {
    setModelManager(modelManager);
    const Parameters& parameters = settingParameters(*this);
    bool parsed = false;
    try {
        const std::string commandLine = parameters.getStringParameter(commandLineParameter);
        int argc = 0;
        char** argv = nullptr;
        convertToArgcArgv(commandLine.c_str(), argc, argv);
        debugPrintArgcArgv(argc, argv);
        parsed = core_ != nullptr && core_->settings->parseArguments(argc, argv) >= 0;
    } catch (const std::bad_alloc&) {
        parsed = false;
    }
    if (!parsed) {
        throw std::runtime_error("Unable to parse FMISolver command line");
    }
}

void PluginFmiSolver::setUp(ModelManager* modelManager) {
    runOperation(*this, preparationFailure, [&] {
        setModelManager(modelManager);
        const std::string directory = workingDirectory(*this);
        return openRun(core(), directory,
                       scriptDirectoryFor(platform::nativePaths(), modelFilePath(*this)));
    });
}

void PluginFmiSolver::applyInitialInputs(int /*iteration*/) {
    runOperation(*this, preparationFailure, [&] {
        return data_exchange::setFmuInputs(core(), getMyModel(), getModelSetup());
    });
}

void PluginFmiSolver::start() {
    runOperation(*this, preparationFailure, [&] {
        run_config::printLine(
            {"FMISolver: Running in ", isCoupled(*this) ? "coupled" : "standalone", " mode"});
        return startRun(core(), getMyModel(), getModelSetup());
    });
}

void PluginFmiSolver::writeInitialOutputs(int /*iteration*/) {
    runOperation(*this, preparationFailure, [&] {
        return data_exchange::getFmuOutputs(core(), getMyModel(), getModelSetup());
    });
}

void PluginFmiSolver::applyInputs(double /*time*/) {
    runStepOperation(*this, runFailure, [&] {
        return data_exchange::setFmuInputs(core(), getMyModel(), getModelSetup());
    });
}

void PluginFmiSolver::solveTo(double time) {
    runStepOperation(*this, runFailure, [&] { return advanceSolver(core().runtime, time); });
}

void PluginFmiSolver::writeOutputs(double /*time*/) {
    runStepOperation(*this, outputFailure, [&] {
        return data_exchange::getFmuOutputs(core(), getMyModel(), getModelSetup());
    });
}

void PluginFmiSolver::terminate() {
    // The handle goes with the FMU: a host that calls on afterwards meets a solver without one.
    runOperation(*this, runFailure, [&] {
        return stopSolver(core_ == nullptr ? nullptr : std::exchange(core_->runtime, nullptr));
    });
}

} // namespace solver_plugin

Solver* createSolver() {
    using namespace run_config;
    Solver* solver = nullptr;
    solver_plugin::guarded([&] {
        printLine({"PluginFMISolver: ", buildText(buildValues())});
        printLine({"PluginFMISolver: ", environmentText(toolChain())});
        solver = new (std::nothrow) solver_plugin::PluginFmiSolver;
        return 0;
    });
    return solver;
}
