#include "fmu_runtime/instance.h"
#include "platform/files.h"
#include "platform/path_style.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

using namespace fmu_runtime;

namespace {

constexpr char instanceName[] = "FMU instance";

std::nullopt_t refuseWorkingDirectory(std::string_view directory, const std::string& reason) {
    std::fprintf(stderr, "Working directory %.*s cannot be used: %s\n",
                 static_cast<int>(directory.size()), directory.data(), reason.c_str());
    return std::nullopt;
}

std::optional<std::string> absoluteWorkingDirectory(std::string_view workingDirectory) {
    const platform::PathStyle& style = platform::nativePaths();
    std::string currentDirectory;
    if (!platform::isAbsolute(style, workingDirectory)) {
        std::error_code error;
        currentDirectory = platform::currentDirectory(error);
        if (error) {
            return refuseWorkingDirectory(workingDirectory, error.message());
        }
    }
    auto directory = platform::absoluteDirectory(style, currentDirectory, workingDirectory);
    return directory ? directory
                     : refuseWorkingDirectory(
                           workingDirectory,
                           std::make_error_code(std::errc::filename_too_long).message());
}

/// The directory to unpack into, made where it is missing: some versions of FMI Library end the
/// process when it is not there.
std::optional<std::string> makeWorkingDirectory(std::string_view workingDirectory) {
    auto directory = absoluteWorkingDirectory(workingDirectory);
    if (directory) {
        if (const std::error_code error = platform::createDirectories(*directory)) {
            return refuseWorkingDirectory(*directory, error.message());
        }
    }
    return directory;
}

fmi2_callback_functions_t fmuCallbacks(LogFile* log) {
    fmi2_callback_functions_t callbacks{};
    callbacks.logger = fmuLogger;
    callbacks.allocateMemory = std::calloc;
    callbacks.freeMemory = std::free;
    callbacks.stepFinished = stepFinishedCallback;
    callbacks.componentEnvironment = log;
    return callbacks;
}

void takeDefaultExperiment(FmiToolsInstance& instance) {
    fmi2_import_t* fmu = instance.slave.fmu();
    instance.logInterval = fmi2_import_get_default_experiment_step(fmu);
    instance.startTime = fmi2_import_get_default_experiment_start(fmu);
    instance.endTime = fmi2_import_get_default_experiment_stop(fmu);
}

/// Whether this process may have one (more) instance of the FMU (FMI 2.0 section 4.3.1,
/// canBeInstantiatedOnlyOncePerProcess). Each place that it is unpacked to has a library of its own
/// and could not tell by itself.
bool isInstanceAllowed(FmiToolsInstance& instance) {
    if (!instance.slave.isOnlyOncePerProcess()) {
        return true;
    }
    instance.onlyInstance = platform::claimInProcess(instance.slave.identity());
    if (instance.onlyInstance.isTaken()) {
        std::fprintf(stderr,
                     "The FMU %s allows only one instance in a process "
                     "(canBeInstantiatedOnlyOncePerProcess), and there is one: end that first, or "
                     "run each in a process of its own\n",
                     instance.fmuPath.c_str());
    }
    return !instance.onlyInstance.isTaken();
}

std::unique_ptr<FmiToolsInstance> loadFmuImport(const char* fmuPath, const char* workingDirectory,
                                                const char* scriptDirectory) {
    auto instance = std::make_unique<FmiToolsInstance>();
    auto unpackDirectory = makeWorkingDirectory(workingDirectory);
    if (!unpackDirectory) {
        return nullptr;
    }
    instance->scriptDirectory = scriptDirectory;
    instance->fmuPath = fmuPath;
    instance->unpackDirectory = std::move(*unpackDirectory);
    if (!instance->slave.open(instance->fmuPath, instance->unpackDirectory, libraryLogger)) {
        return nullptr;
    }
    if (!isInstanceAllowed(*instance)) {
        return nullptr;
    }
    const auto status = instance->slave.loadBinary(fmuCallbacks(instance->log.get()));
    if (status == jm_status_error) {
        std::fprintf(stderr, "Could not create the DLL loading mechanism(C-API). Error: %d\n",
                     static_cast<int>(status));
        return nullptr;
    }
    takeDefaultExperiment(*instance);
    return instance;
}

std::int32_t instantiateFmu(FmiToolsInstance& instance) {
    if (instance.slave.instantiate(instanceName) == jm_status_error) {
        return instantiationFailed;
    }
    instance.currentTime = 0.0;
    return success;
}

} // namespace

FmiToolsInstance* fmiToolsLoadFmu(const char* fmuPath, const char* workingDirectory,
                                  const char* scriptDirectory) {
    if (fmuPath == nullptr || workingDirectory == nullptr || scriptDirectory == nullptr) {
        return nullptr;
    }
    return guarded<FmiToolsInstance*>(nullptr, [&]() -> FmiToolsInstance* {
        std::fprintf(stderr, "FMUPath: %s\n", fmuPath);
        std::fprintf(stderr, "Working directory: %s\n", workingDirectory);
        auto instance = loadFmuImport(fmuPath, workingDirectory, scriptDirectory);
        if (instance == nullptr) {
            return nullptr;
        }
        // A refused instantiation does not take the handle away: the log, which the caller opens
        // next, tells of it when the first call fails.
        static_cast<void>(instantiateFmu(*instance));
        return instance.release();
    });
}
