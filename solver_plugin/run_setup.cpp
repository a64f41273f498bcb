#include "solver_plugin/run_setup.h"

#include "fmu_runtime/instance.h"
#include "platform/claim.h"
#include "platform/path_style.h"
#include "run_config/build_information.h"
#include "run_config/console.h"
#include "run_config/run_paths.h"
#include "solver_plugin/plugin_log.h"
#include "solver_plugin/run_state.h"

#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

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

struct EndFmu {
    void operator()(FmiToolsInstance* fmu) const { fmiToolsCleanup(fmu); }
};

using LoadedFmu = std::unique_ptr<FmiToolsInstance, EndFmu>;

/// A file of the run as `open` could open it: with the first number from `number` on that no other
/// run has. Counts `number` on; returns what `open` answered.
template <typename Open>
std::int32_t openFree(const std::string& wanted, unsigned& number, std::string& path, Open open) {
    constexpr unsigned mostRuns = 10'000;
    for (;; ++number) {
        path = run_config::numberedFile(wanted, number);
        const std::int32_t result = open(path.c_str());
        if (result != fmu_runtime::fileTaken || number >= mostRuns) {
            return result;
        }
    }
}

std::string nameOf(const std::string& path) {
    return std::string(platform::fileNameOf(platform::nativePaths(), path));
}

void tellOfMovedFiles(FmiToolsInstance* fmu, const RunFiles& files, const std::string& wantedLog) {
    run_config::printLine({"FMISolver: another run has ", wantedLog,
                           " or its results; this run writes ", files.log, " and ", files.results});
    logLine(fmu, "OK", "Another run has the usual log or results; this run writes %s and %s",
            nameOf(files.log).c_str(), nameOf(files.results).c_str());
}

void tellOfMovedDirectory(FmiToolsInstance* fmu, const std::string& wanted,
                          const std::string& directory) {
    run_config::printLine(
        {"FMISolver: another run has its FMU in ", wanted, "; this run unpacks into ", directory});
    if (fmu != nullptr) {
        logLine(fmu, "OK",
                "Another run has its FMU in the usual directory; this run unpacks into %s",
                nameOf(directory).c_str());
    }
}

} // namespace

std::int32_t openRun(SolverCore& core, const std::string& workingDirectory,
                     const std::string& scriptDirectory) {
    const auto& style = platform::nativePaths();
    const std::string fmuPath = core.settings->fmuPath();
    const std::string instance = core.settings->instance();
    const std::string stem = run_config::runFileStem(
        style, run_config::outputDirectoryFor(workingDirectory), fmuPath, instance);
    const auto wanted = run_config::unpackDirectories(style, workingDirectory, stem, instance);
    auto directory = platform::claimFreeDirectory(wanted.first, wanted.others);
    core.runtime = openFmu(fmuPath, directory.path, stem + ".out", stem + ".csv", scriptDirectory,
                           core.settings->includeLocal(), core.files);
    if (!directory.isFirst) {
        tellOfMovedDirectory(core.runtime, wanted.first, directory.path);
    }
    if (core.runtime == nullptr) {
        return -1;
    }
    core.runtime->unpackClaim = std::move(directory.claim);
    return 0;
}

FmiToolsInstance* openFmu(const std::string& fmuPath, const std::string& workingDirectory,
                          const std::string& logFile, const std::string& resultsFile,
                          const std::string& scriptDirectory, bool /*includeLocal*/,
                          RunFiles& files) {
    run_config::printErrorLine({"FMUPath: ", fmuPath});
    run_config::printErrorLine({"Working directory: ", workingDirectory});
    run_config::printErrorLine({"Log file: ", logFile});
    LoadedFmu fmu(
        fmiToolsLoadFmu(fmuPath.c_str(), workingDirectory.c_str(), scriptDirectory.c_str()));
    if (fmu == nullptr) {
        return nullptr;
    }
    unsigned number = 1;
    openFree(logFile, number, files.log,
             [&](const char* path) { return fmu_runtime::openLogFile(*fmu, path); });
    if (std::getenv("FMI_PLUGIN_DEBUG_LOGS") != nullptr) {
        fmiToolsEnableDebugLogs(fmu.get(), 1);
    }
    logIdentification(fmu.get());
    const std::int32_t result = openFree(resultsFile, number, files.results, [&](const char* path) {
        return fmu_runtime::openResultsFile(*fmu, path);
    });
    if (result == fmu_runtime::notAvailable) {
        // The FMU stays loaded: a host may look at it, or at its files, after the failed set-up.
        logLine(fmu.get(), "Error", "Failed to setup results logging");
        static_cast<void>(fmu.release());
        return nullptr;
    }
    files.isMoved = number > 1;
    if (files.isMoved) {
        tellOfMovedFiles(fmu.get(), files, logFile);
    }
    return enterCreated(fmu.release());
}

} // namespace solver_plugin
