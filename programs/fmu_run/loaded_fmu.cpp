#include "fmu_run/loaded_fmu.h"

#include "fmu_run/model_information.h"
#include "platform/files.h"
#include "platform/path_style.h"
#include "platform/shared_library.h"
#include "platform/stream_redirection.h"
#include "program_support/input_error.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <optional>

namespace fmu_run {

using program_support::InputError;

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
    std::string result;
    for (std::string line; std::getline(stream, line);) {
        for (const std::string_view level : {"log level = 1: ", "log level = 2: "}) {
            if (const auto found = line.find(level); found != std::string::npos) {
                result += (result.empty() ? "" : "; ") + line.substr(found + level.size());
            }
        }
    }
    return result.empty() ? "the FMI library gives no reason" : result;
}

/// Lines that tell of work in progress: of the runtime's log before it has its file, of the runtime
/// about what it loads, and of the FMI library.
bool isProgress(const std::string& line) {
    return line.find("][OK] ") != std::string::npos || line.starts_with("FMUPath: ") ||
           line.starts_with("Working directory: ") || line.starts_with("module = ");
}

/// Shows what else was kept in a file, such as the complaints of an FMU that is instantiated: they
/// come too early for its log file.
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
std::string loadProblem(const ModelInformation& model, const std::string& errorFile) {
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
    std::string text = "it has no library for " + platform;
    for (const auto& each : offered) {
        text += (&each == offered.data() ? ", only for " : ", ") + each;
    }
    return text + "; export it for " + platform;
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
        const auto model = unpackModel(fmuPath, directory.unpackDirectory());
        throw InputError("cannot use '" + fmuPath + "': " + loadProblem(model, errorFile_));
    }
    showComplaints();
}

LoadedFmu::~LoadedFmu() {
    const KeptOutput kept(outputFile_, errorFile_);
    fmiToolsCleanup(instance_);
}

void LoadedFmu::load(const std::string& fmuPath, const RunDirectory& directory) {
    const KeptOutput kept(outputFile_, errorFile_);
    // The run's own directory holds no clean-up script: it is removed as a whole.
    const auto scriptDirectory =
        platform::withTrailingSeparator(platform::nativePaths(), directory.temporaryFile("script"));
    instance_ = fmiToolsLoadFmu(fmuPath.c_str(), directory.unpackDirectory().c_str(),
                                scriptDirectory.c_str());
}

std::int32_t LoadedFmu::startInitialization() const {
    std::int32_t status = 0;
    {
        const KeptOutput kept(outputFile_, errorFile_);
        status = fmiToolsStartInitialization(instance_);
    }
    showComplaints();
    return status;
}

std::int32_t LoadedFmu::endInitialization() const {
    std::int32_t status = 0;
    {
        const KeptOutput kept(outputFile_, errorFile_);
        status = fmiToolsEndInitialization(instance_);
    }
    showComplaints();
    return status;
}

void LoadedFmu::showComplaints() const {
    showAndRemove(outputFile_);
    showAndRemove(errorFile_);
}

} // namespace fmu_run
