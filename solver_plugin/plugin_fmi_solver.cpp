#include "solver_plugin/plugin_fmi_solver.h"

#include "create_solver.h"
#include "data_exchange/inputs.h"
#include "data_exchange/outputs.h"
#include "host/logger.h"
#include "host/parameters.h"
#include "host/required.h"
#include "host/setting_indices.h"
#include "host/solver_settings.h"
#include "platform/path_style.h"
#include "run_config/build_information.h"
#include "run_config/console.h"
#include "run_config/run_paths.h"
#include "solver_plugin/host_settings.h"
#include "solver_plugin/plugin_log.h"
#include "solver_plugin/run.h"
#include "solver_plugin/run_setup.h"
#include "solver_plugin/start.h"

#include <new>
#include <stdexcept>
#include <utility>

namespace solver_plugin {

namespace {

/// The codes that tell the host what failed.
constexpr int outputFailure = 3;
constexpr int preparationFailure = 4;
constexpr int runFailure = 5;

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
    if (core_ == nullptr) {
        throw std::bad_alloc();
    }
    return *core_;
}

template <typename Operation>
std::int32_t PluginFmiSolver::resultOf(const char* name, Operation operation) const {
    FmiToolsInstance* fmu = core_ == nullptr ? nullptr : core_->runtime;
    try {
        return operation();
    } catch (const std::exception& error) {
        logLine(fmu, "Error", "%s: %s", name, error.what());
    } catch (...) {
        logLine(fmu, "Error", "%s: the host threw something that is no std::exception", name);
    }
    return -1;
}

template <typename Operation>
void PluginFmiSolver::perform(const char* name, int failureCode, Operation operation) const {
    report(name, failureCode, resultOf(name, operation));
}

template <typename Operation>
void PluginFmiSolver::performStep(const char* name, int failureCode, Operation operation) const {
    perform(name, failureCode, [&] { return isStepSkipped(*this) ? 0 : operation(); });
}

void PluginFmiSolver::report(const char* name, int failureCode, std::int32_t result) const {
    if (result < 0) {
        resultOf(name, [&] {
            writeStatus(*this, failureCode);
            return 0;
        });
    }
}

std::int32_t PluginFmiSolver::setInputs() const {
    return data_exchange::setFmuInputs(core().runtime, core().settings->arrayInputs(),
                                       getModelSetup());
}

std::int32_t PluginFmiSolver::getOutputs() const {
    return data_exchange::getFmuOutputs(core().runtime, core().settings->outputsAreArrays(),
                                        getModelSetup());
}

void PluginFmiSolver::printBanner() {
    using namespace run_config;
    resultOf("printBanner", [] {
        Logger& logger = host::required(Logger::get(), "logger");
        logger.log(Logger::info, "FMISolver " + buildText(buildValues()));
        logger.log(Logger::info, "FMISolver " + environmentText(toolChain()));
        return 0;
    });
}

void PluginFmiSolver::parseCommandLine(ModelManager* modelManager) {
    setModelManager(modelManager);
    const Parameters& parameters = settingParameters(*this);
    const std::string commandLine =
        parameters.getStringParameter(host::solver_parameter::commandLine);
    int argc = 0;
    char** argv = nullptr;
    convertToArgcArgv(commandLine.c_str(), argc, argv);
    debugPrintArgcArgv(argc, argv);
    if (core().settings->parseArguments(argc, argv) < 0) {
        throw std::runtime_error("Unable to parse FMISolver command line");
    }
}

void PluginFmiSolver::setUp(ModelManager* modelManager) {
    const std::int32_t result = resultOf("setUp", [&] {
        setModelManager(modelManager);
        const std::string directory = workingDirectory(*this);
        const std::string scriptDirectory =
            run_config::scriptDirectoryFor(platform::nativePaths(), modelFilePath(*this));
        return openRun(core(), directory, scriptDirectory);
    });
    if (result < 0) {
        resultOf("setUp", [&] {
            writeSetUpStatus(*this, preparationFailure);
            return 0;
        });
    } else {
        tellHostOfMovedFiles();
    }
}

/// A host that shows the run's files to its user would look at those of another run.
void PluginFmiSolver::tellHostOfMovedFiles() const {
    resultOf("setUp", [&] {
        const RunFiles& files = core().files;
        if (Logger* logger = Logger::get(); files.isMoved && logger != nullptr) {
            logger->log(Logger::info, "FMISolver log file: " + files.log);
            logger->log(Logger::info, "FMISolver results file: " + files.results);
        }
        return 0;
    });
}

void PluginFmiSolver::applyInitialInputs(int /*iteration*/) {
    perform("applyInitialInputs", preparationFailure, [&] { return setInputs(); });
}

void PluginFmiSolver::start() {
    const std::int32_t result = resultOf("start", [&] {
        run_config::printLine(
            {"FMISolver: Running in ", isCoupled(*this) ? "coupled" : "standalone", " mode"});
        return startRun(core(), getMyModel(), getModelSetup());
    });
    if (result == kindMismatch) {
        throw std::runtime_error("Unexpected FMUType. FMU does not match type: " +
                                 core().settings->fmuType());
    }
    report("start", preparationFailure, result);
}

void PluginFmiSolver::writeInitialOutputs(int /*iteration*/) {
    perform("writeInitialOutputs", preparationFailure, [&] { return getOutputs(); });
}

void PluginFmiSolver::applyInputs(double /*time*/) {
    performStep("applyInputs", runFailure, [&] { return setInputs(); });
}

void PluginFmiSolver::solveTo(double time) {
    performStep("solveTo", runFailure, [&] { return advanceSolver(core().runtime, time); });
}

void PluginFmiSolver::writeOutputs(double /*time*/) {
    performStep("writeOutputs", outputFailure, [&] { return getOutputs(); });
}

void PluginFmiSolver::terminate() {
    // The handle goes with the FMU: a host that calls on afterwards meets a solver without one.
    FmiToolsInstance* fmu = core_ == nullptr ? nullptr : std::exchange(core_->runtime, nullptr);
    perform("terminate", runFailure, [&] { return stopSolver(fmu); });
}

} // namespace solver_plugin

Solver* createSolver() {
    using namespace run_config;
    try {
        printLine({"PluginFMISolver: ", buildText(buildValues())});
        printLine({"PluginFMISolver: ", environmentText(toolChain())});
        return new (std::nothrow) solver_plugin::PluginFmiSolver;
    } catch (...) {
        return nullptr;
    }
}
