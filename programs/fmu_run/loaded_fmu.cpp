#include "programs/fmu_run/loaded_fmu.h"

#include "platform/files.h"
#include "platform/path_style.h"
#include "platform/shared_library.h"
#include "platform/stream_redirection.h"
#include "programs/fmu_run/fmu_description.h"
#include "programs/support/call_watch.h"
#include "programs/support/input_error.h"
#include "programs/support/joined.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <system_error>

namespace fmu_run {

using program_support::ForeignCall;
using program_support::InputError;
using program_support::joined;

namespace {

std::string loadRemedy(const std::vector<std::string>& errors) {
    const auto isOfFunction = [](const std::string& error) {
        return error.find("Could not load the FMI function") != std::string::npos;
    };
    return std::any_of(errors.begin(), errors.end(), isOfFunction)
               ? "ask the FMU's maker for one that has all functions of FMI 2.0"
               : "see that every library it needs is beside it in the FMU or installed";
}

/// Whether the runtime says in the file that it could not open one called `what`. A device has no
/// end to read to.
bool tellsOfRefused(const std::string& file, const std::string& what) {
    const auto path = platform::nativePath(file);
    std::error_code unknown;
    if (!std::filesystem::is_regular_file(path, unknown)) {
        return false;
    }
    std::ifstream stream(path);
    std::string line;
    while (std::getline(stream, line) &&
           line.find("][FMITools][None][Error] Failed to open " + what) == std::string::npos) {
    }
    return static_cast<bool>(stream);
}

/// Lines that tell of work in progress: of the runtime's log before it has its file, of the runtime
/// about what it loads, and of the FMI library.
bool isProgress(const std::string& line) {
    return line.find("][OK] ") != std::string::npos || line.starts_with("FMUPath: ") ||
           line.starts_with("Working directory: ") || line.starts_with("module = ");
}

/// Shows what else the runtime said in the file while it opened the run's, and removes it.
void showAndRemove(const std::string& file) {
    const auto path = platform::nativePath(file);
    std::ifstream stream(path);
    for (std::string line; std::getline(stream, line);) {
        if (!isProgress(line)) {
            std::cerr << line << '\n';
        }
    }
    stream.close();
    std::error_code error;
    std::filesystem::remove(path, error);
}

/// Why the runtime could not load an FMU whose archive and model description are in order.
std::string loadProblem(const FmuDescription& model, const std::vector<std::string>& errors) {
    if (!model.coSimulation) {
        return "it offers " + model.kind + " only; export it for Co-Simulation";
    }
    const std::string platform = platform::SharedLibrary::fmiPlatform();
    const auto& offered = model.platforms;
    if (std::find(offered.begin(), offered.end(), platform) != offered.end()) {
        return "its library does not load: " +
               (errors.empty() ? "the FMI library gives no reason" : joined(errors, "; ")) + "; " +
               loadRemedy(errors);
    }
    return "it has no library for " + platform +
           (offered.empty() ? "" : ", only for " + joined(offered, ", ")) + "; export it for " +
           platform;
}

} // namespace

LoadedFmu::LoadedFmu(const std::string& fmuPath, const RunDirectory& directory, bool showMessages)
    : keptIn_(showMessages ? std::filesystem::path() : directory.temporary()),
      openingFile_(directory.temporaryFile("opening")) {
    load(fmuPath, directory);
    if (instance_ == nullptr) {
        const auto model = unpackFmu(fmuPath, directory.unpackDirectory());
        throw InputError("cannot use '" + fmuPath +
                         "': " + loadProblem(model, takeMessages().loadErrors));
    }
}

LoadedFmu::~LoadedFmu() {
    {
        const auto kept = keepOutput();
        const ForeignCall call("fmi2Terminate or fmi2FreeInstance", time_);
        fmiToolsCleanup(instance_);
    }
    show(takeMessages().complaints);
}

void LoadedFmu::load(const std::string& fmuPath, const RunDirectory& directory) {
    const auto kept = keepOutput();
    // The run's own directory holds no clean-up script: it is removed as a whole.
    const auto scriptDirectory =
        platform::withTrailingSeparator(platform::nativePaths(), directory.temporaryFile("script"));
    const ForeignCall call("fmi2Instantiate, or its library's loading,", time_);
    instance_ = fmiToolsLoadFmu(fmuPath.c_str(), directory.unpackDirectory().c_str(),
                                scriptDirectory.c_str());
}

program_support::KeptOutput LoadedFmu::keepOutput() const {
    return program_support::KeptOutput(keptIn_);
}

void LoadedFmu::openFiles(const std::string& logFile, const std::string& resultsFile) const {
    {
        const platform::StreamRedirection kept(stdout, openingFile_);
        fmiToolsSetLogFile(instance_, logFile.c_str());
        fmiToolsSetResultsFile(instance_, resultsFile.c_str());
    }
    const bool logIsTaken = tellsOfRefused(openingFile_, "log file");
    if (logIsTaken || tellsOfRefused(logFile, "results file")) {
        throw std::runtime_error("another run has just taken '" +
                                 (logIsTaken ? logFile : resultsFile) + "'; start this one again");
    }
    showAndRemove(openingFile_);
}

program_support::KeptMessages LoadedFmu::takeMessages() const {
    return keptIn_.empty() ? program_support::KeptMessages()
                           : program_support::takeKeptMessages(keptIn_);
}

std::int32_t LoadedFmu::startInitialization() {
    const ForeignCall call("fmi2SetupExperiment or fmi2EnterInitializationMode", time_);
    return fmiToolsStartInitialization(instance_);
}

std::int32_t LoadedFmu::endInitialization() {
    const ForeignCall call("fmi2ExitInitializationMode", time_);
    return fmiToolsEndInitialization(instance_);
}

std::int32_t LoadedFmu::stepTo(double time) {
    const ForeignCall call("fmi2DoStep, or in fmi2GetReal after it,", time_);
    const std::int32_t status = fmiToolsSimulateToT(instance_, time);
    time_ = time;
    return status;
}

void show(const std::vector<std::string>& complaints) {
    for (const auto& complaint : complaints) {
        std::cerr << complaint << '\n';
    }
}

} // namespace fmu_run
