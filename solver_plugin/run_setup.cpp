#include "solver_plugin/run_setup.h"

#include "platform/path_style.h"
#include "run_config/build_information.h"
#include "run_config/console.h"
#include "run_config/run_paths.h"
#include "solver_plugin/plugin_log.h"
#include "solver_plugin/run_state.h"

#include <cstdlib>

namespace solver_plugin {

namespace {

void logIdentification(FmiToolsInstance* fmu) {
    const auto& build = run_config::buildValues();
    logLine(fmu, "OK", "FMI plugin version: %s", build.version);
    logLine(fmu, "OK", "FMI plugin build ID: %s", build.commit);
    logLine(fmu, "OK", "FMI plugin build date: %s", build.date);
    logLine(fmu, "OK", "FMU generation tool: %s", fmiToolsGetGenerationTool(fmu));
}

/// Brings a loaded FMU into state `created`; ends it when there is no memory for that.
FmiToolsInstance* enterCreated(FmiToolsInstance* fmu) {
    if (createRunState(fmu) != 0) {
        logLine(fmu, "Error", "Not enough memory for the state of the run");
        fmiToolsCleanup(fmu);
        return nullptr;
    }
    setState(fmu, SolverState::created);
    return fmu;
}

} // namespace

std::int32_t openRun(SolverCore& core, const std::string& workingDirectory,
                     const std::string& scriptDirectory) {
    const std::string fmuPath = core.settings->fmuPath();
    const std::string stem = run_config::runFileStem(
        platform::nativePaths(), run_config::outputDirectoryFor(workingDirectory), fmuPath);
    core.runtime = openFmu(fmuPath, workingDirectory, stem + ".out", stem + ".csv", scriptDirectory,
                           core.settings->includeLocal());
    return core.runtime == nullptr ? -1 : 0;
}

FmiToolsInstance* openFmu(const std::string& fmuPath, const std::string& workingDirectory,
                          const std::string& logFile, const std::string& resultsFile,
                          const std::string& scriptDirectory, bool /*includeLocal*/) {
    run_config::printErrorLine({"FMUPath: ", fmuPath});
    run_config::printErrorLine({"Working directory: ", workingDirectory});
    run_config::printErrorLine({"Log file: ", logFile});
    auto* fmu = fmiToolsLoadFmu(fmuPath.c_str(), workingDirectory.c_str(), scriptDirectory.c_str());
    if (fmu == nullptr) {
        return nullptr;
    }
    fmiToolsSetLogFile(fmu, logFile.c_str());
    if (std::getenv("FMI_PLUGIN_DEBUG_LOGS") != nullptr) {
        fmiToolsEnableDebugLogs(fmu, 1);
    }
    logIdentification(fmu);
    if (fmiToolsSetResultsFile(fmu, resultsFile.c_str()) != 0) {
        // The FMU stays loaded: a host may look at it, or at its files, after the failed set-up.
        logLine(fmu, "Error", "Failed to setup results logging");
        return nullptr;
    }
    return enterCreated(fmu);
}

} // namespace solver_plugin
