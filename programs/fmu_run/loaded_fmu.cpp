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
#include <fstream>
#include <iostream>
#include <optional>

namespace fmu_run {

using program_support::ForeignCall;
using program_support::InputError;
using program_support::joined;

namespace {

/// Keeps both standard streams in files while it lives; does nothing for empty names.
class KeptOutput {
  public:
    KeptOutput(const std::string& outputFile, const std::string& errorFile) {
        if (!outputFile.empty()) {
            output_.emplace(stdout, outputFile);
            error_.emplace(stderr, errorFile);
        }
    }

  private:
    std::optional<platform::StreamRedirection> output_;
    std::optional<platform::StreamRedirection> error_;
};

/// The FMI library's errors among the lines that the runtime printed about it.
std::string libraryErrors(const std::string& errorFile) {
    std::ifstream stream(platform::nativePath(errorFile));
    std::vector<std::string> errors;
    for (std::string line; std::getline(stream, line);) {
        for (const std::string_view level : {"log level = 1: ", "log level = 2: "}) {
            if (const auto found = line.find(level); found != std::string::npos) {
                errors.push_back(line.substr(found + level.size()));
            }
        }
    }
    return errors.empty() ? "the FMI library gives no reason" : joined(errors, "; ");
}

/// Whether that is a line of the file.
bool holds(const std::string& file, const std::string& wanted) {
    std::ifstream stream(platform::nativePath(file));
    std::string line;
    while (std::getline(stream, line) && line != wanted) {
    }
    return static_cast<bool>(stream);
}

/// Lines that tell of work in progress: of the runtime's log before it has its file, of the runtime
/// about what it loads, and of the FMI library.
bool isProgress(const std::string& line) {
    return line.find("][OK] ") != std::string::npos || line.starts_with("FMUPath: ") ||
           line.starts_with("Working directory: ") || line.starts_with("module = ");
}

/// An error line of the runtime's log: its file could not be written.
bool isOfRuntime(const std::string& line) {
    return line.find("][FMITools][None][Error] ") != std::string::npos;
}

/// Shows what else was kept in a file, such as the complaints of an FMU that is instantiated: they
/// come too early for its log file.
template <typename Condition>
void showAndRemove(const std::string& file, Condition isToBeShown) {
    const auto path = platform::nativePath(file);
    std::ifstream stream(path);
    for (std::string line; std::getline(stream, line);) {
        if (isToBeShown(line)) {
            std::cerr << line << '\n';
        }
    }
    stream.close();
    std::error_code error;
    std::filesystem::remove(path, error);
}

/// Why the runtime could not load an FMU whose archive and model description are in order.
std::string loadProblem(const FmuDescription& model, const std::string& errorFile) {
    if (!model.coSimulation) {
        return "it offers " + model.kind + " only; export it for Co-Simulation";
    }
    const std::string platform = platform::SharedLibrary::fmiPlatform();
    const auto& offered = model.platforms;
    if (std::find(offered.begin(), offered.end(), platform) != offered.end()) {
        return "its library does not load: " +
               (errorFile.empty() ? "see the messages above" : libraryErrors(errorFile)) +
               "; see that every library it needs is beside it in the FMU or installed";
    }
    return "it has no library for " + platform +
           (offered.empty() ? "" : ", only for " + joined(offered, ", ")) + "; export it for " +
           platform;
}

} // namespace

LoadedFmu::LoadedFmu(const std::string& fmuPath, const RunDirectory& directory, bool showMessages) {
    requireFile(fmuPath);
    if (!showMessages) {
        outputFile_ = directory.temporaryFile("output");
        errorFile_ = directory.temporaryFile("error");
    }
    load(fmuPath, directory);
    if (instance_ == nullptr) {
        const auto model = unpackFmu(fmuPath, directory.unpackDirectory());
        throw InputError("cannot use '" + fmuPath + "': " + loadProblem(model, errorFile_));
    }
    showComplaints();
}

LoadedFmu::~LoadedFmu() {
    {
        const KeptOutput kept(outputFile_, errorFile_);
        const ForeignCall call("fmi2Terminate or fmi2FreeInstance", time_);
        fmiToolsCleanup(instance_);
    }
    showAndRemove(errorFile_, [](const std::string& line) { return isOfRuntime(line); });
}

void LoadedFmu::load(const std::string& fmuPath, const RunDirectory& directory) {
    const KeptOutput kept(outputFile_, errorFile_);
    // The run's own directory holds no clean-up script: it is removed as a whole.
    const auto scriptDirectory =
        platform::withTrailingSeparator(platform::nativePaths(), directory.temporaryFile("script"));
    const ForeignCall call("fmi2Instantiate, or its library's loading,", time_);
    instance_ = fmiToolsLoadFmu(fmuPath.c_str(), directory.unpackDirectory().c_str(),
                                scriptDirectory.c_str());
}

std::int32_t LoadedFmu::startInitialization() {
    std::int32_t status = 0;
    {
        const KeptOutput kept(outputFile_, errorFile_);
        const ForeignCall call("fmi2SetupExperiment or fmi2EnterInitializationMode", time_);
        status = fmiToolsStartInitialization(instance_);
    }
    instantiated_ = !holds(errorFile_, "fmi2Instantiate returned no instance");
    showComplaints();
    return status;
}

std::int32_t LoadedFmu::endInitialization() const {
    std::int32_t status = 0;
    {
        const KeptOutput kept(outputFile_, errorFile_);
        const ForeignCall call("fmi2ExitInitializationMode", time_);
        status = fmiToolsEndInitialization(instance_);
    }
    showComplaints();
    return status;
}

std::int32_t LoadedFmu::stepTo(double time) {
    const ForeignCall call("fmi2DoStep, or in fmi2GetReal after it,", time_);
    const std::int32_t status = fmiToolsSimulateToT(instance_, time);
    time_ = time;
    return status;
}

void LoadedFmu::showComplaints() const {
    const auto isToBeShown = [](const std::string& line) { return !isProgress(line); };
    showAndRemove(outputFile_, isToBeShown);
    showAndRemove(errorFile_, isToBeShown);
}

} // namespace fmu_run
