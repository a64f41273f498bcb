#include "fmi_import/slave/binary.h"

#include "fmi_import/model_description/model_description_reader.h"
#include "platform/files.h"
#include "platform/path_style.h"

#include <algorithm>
#include <initializer_list>
#include <system_error>
#include <vector>

namespace fmi_import {

namespace {

namespace fs = std::filesystem;

std::string joined(std::string_view directory, std::string_view name) {
    return std::string(directory) + platform::nativePaths().separator + std::string(name);
}

/// True when there is a library in `folder`, of whatever platform.
bool hasLibrary(const fs::path& folder) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        const fs::path suffix = entry->path().extension();
        if (suffix == ".dll" || suffix == ".so" || suffix == ".dylib") {
            return true;
        }
    }
    return false;
}

/// Names of the folders below binaries/ that have a library, separated by commas.
std::string platformFolders(const std::string& directory) {
    std::vector<std::string> folders;
    std::error_code error;
    for (fs::directory_iterator entry(platform::nativePath(joined(directory, "binaries")), error);
         !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (entry->is_directory(error) && hasLibrary(entry->path())) {
            folders.push_back(platform::narrowPath(entry->path().filename()));
        }
    }
    std::ranges::sort(folders);
    std::string result;
    for (const std::string& folder : folders) {
        result.append(result.empty() ? "" : ", ").append(folder);
    }
    return result;
}

void reportMissingPlatform(const Log& log, const std::string& directory) {
    log.fatal(module::library, {"The FMU contains no binary for this platform."});
    const std::string folders = platformFolders(directory);
    if (folders.empty()) {
        log.fatal(module::library, {"The FMU has no library in any folder below 'binaries'."});
    } else {
        log.fatal(module::library, {"The FMU has binaries for: ", folders,
                                    ". Needed here: ", platform::SharedLibrary::fmiPlatform()});
    }
}

/// Says why there is no library in `folder` of the FMU.
void reportMissingFolder(const Log& log, const std::string& directory,
                         const std::string& absoluteDirectory, const std::string& folder) {
    std::error_code error;
    const fs::path path = platform::nativePath(joined(absoluteDirectory, folder));
    const fs::file_status status = fs::status(path, error);
    if (!fs::is_directory(status)) {
        log.fatal(module::library, {"Could not change to the DLL directory ",
                                    joined(directory, folder),
                                    {&platform::nativePaths().separator, 1}});
    }
    if (fs::is_directory(status) || status.type() == fs::file_type::not_found) {
        reportMissingPlatform(log, absoluteDirectory);
    } else {
        const auto reason =
            fs::exists(status) ? std::make_error_code(std::errc::not_a_directory) : error;
        log.fatal(module::library, {"System error: ", reason.message()});
    }
}

/// True unless the loader has bound the code of another file than that at `path`, which it does
/// when the process still has an earlier one of that path.
bool isBoundTo(const Log& log, const platform::SharedLibrary& library, const std::string& path) {
    const std::string bound = library.boundFile();
    std::error_code error;
    if (bound.empty() ||
        fs::equivalent(platform::nativePath(bound), platform::nativePath(path), error)) {
        return true;
    }
    log.fatal(
        module::binary,
        {"Could not load the FMU binary: instead of ", path, " the process still has the library '",
         bound,
         "', which cannot be unloaded; start the program anew or unpack the FMU into another ",
         "directory"});
    return false;
}

/// Looks functions up in a library.
class Resolver {
  public:
    Resolver(const Log& log, platform::SharedLibrary& library) : log_(log), library_(library) {}

    /// Function `name`; null, with a message, when there is none.
    template <typename Function>
    void resolve(const char* name, Function& function) {
        function = reinterpret_cast<Function>(find(name));
        complete_ = complete_ && function != nullptr;
    }

    /// Functions that a binary must have although nobody here calls them.
    void require(std::initializer_list<const char*> names) {
        for (const char* name : names) {
            complete_ = find(name) != nullptr && complete_;
        }
    }

    /// Functions that only a binary with a capability has; takes it away when one is missing.
    void requireFor(bool& capability, const char* flag, std::initializer_list<const char*> names) {
        capability = capability && std::ranges::all_of(names, [&](const char* name) {
                         return find(name) != nullptr;
                     });
        if (!capability) {
            log_.warning(module::binary, {"Resetting flag 'cs_", flag, "'"});
        }
    }

    [[nodiscard]] bool isComplete() const { return complete_; }

  private:
    void* find(const char* name) {
        void* address = library_.symbol(name);
        if (address == nullptr) {
            log_.error(module::binary,
                       {"Could not load the FMI function '", name, "'. ", library_.error()});
        }
        return address;
    }

    const Log& log_;
    platform::SharedLibrary& library_;
    bool complete_ = true;
};

void resolveCommon(Resolver& resolver, FmuFunctions& functions) {
    resolver.resolve("fmi2GetTypesPlatform", functions.getTypesPlatform);
    resolver.resolve("fmi2GetVersion", functions.getVersion);
    resolver.resolve("fmi2SetDebugLogging", functions.setDebugLogging);
    resolver.resolve("fmi2Terminate", functions.terminate);
    resolver.resolve("fmi2Reset", functions.reset);
    resolver.resolve("fmi2Instantiate", functions.instantiate);
    resolver.resolve("fmi2FreeInstance", functions.freeInstance);
    resolver.resolve("fmi2SetupExperiment", functions.setupExperiment);
    resolver.resolve("fmi2EnterInitializationMode", functions.enterInitializationMode);
    resolver.resolve("fmi2ExitInitializationMode", functions.exitInitializationMode);
    resolver.resolve("fmi2GetReal", functions.getReal);
    resolver.resolve("fmi2GetInteger", functions.getInteger);
    resolver.resolve("fmi2GetBoolean", functions.getBoolean);
    resolver.resolve("fmi2GetString", functions.getString);
    resolver.resolve("fmi2SetReal", functions.setReal);
    resolver.resolve("fmi2SetInteger", functions.setInteger);
    resolver.resolve("fmi2SetBoolean", functions.setBoolean);
    resolver.resolve("fmi2SetString", functions.setString);
}

void checkCapabilities(Resolver& resolver, Capabilities& capabilities) {
    if (capabilities.getAndSetState) {
        resolver.requireFor(capabilities.getAndSetState, "canGetAndSetFMUstate",
                            {"fmi2GetFMUstate", "fmi2SetFMUstate", "fmi2FreeFMUstate"});
    }
    if (capabilities.serializeState) {
        resolver.requireFor(
            capabilities.serializeState, "canSerializeFMUstate",
            {"fmi2SerializedFMUstateSize", "fmi2SerializeFMUstate", "fmi2DeSerializeFMUstate"});
    }
    if (capabilities.directionalDerivative) {
        resolver.requireFor(capabilities.directionalDerivative, "providesDirectionalDerivatives",
                            {"fmi2GetDirectionalDerivative"});
    }
}

void resolveCoSimulation(Resolver& resolver, FmuFunctions& functions) {
    resolver.require(
        {"fmi2SetRealInputDerivatives", "fmi2GetRealOutputDerivatives", "fmi2CancelStep"});
    resolver.resolve("fmi2DoStep", functions.doStep);
    resolver.require({"fmi2GetStatus", "fmi2GetRealStatus", "fmi2GetIntegerStatus",
                      "fmi2GetBooleanStatus", "fmi2GetStringStatus"});
}

} // namespace

bool Binary::load(const Log& log, const std::string& directory,
                  const std::string& absoluteDirectory, const std::string& identifier,
                  Capabilities& capabilities) {
    if (!isCIdentifier(identifier)) {
        log.fatal(module::binary, {"Could not load the FMU binary: model identifier '", identifier,
                                   "' is not valid (must be a valid C-identifier)"});
        return false;
    }
    const char* platformName = platform::SharedLibrary::fmiPlatform();
    const std::string folder = joined("binaries", platformName);
    const std::string file = joined(folder, identifier + platform::SharedLibrary::suffix());
    path_ = joined(absoluteDirectory, file);
    std::error_code error;
    if (!fs::exists(platform::nativePath(path_), error) &&
        !hasLibrary(platform::nativePath(joined(absoluteDirectory, folder)))) {
        reportMissingFolder(log, directory, absoluteDirectory, folder);
        return false;
    }
    log.info(module::library,
             {"Loading '", platformName, "' binary with 'default' platform types"});
    if (!library_.open(path_)) {
        log.fatal(module::binary, {"Could not load the FMU binary: ", library_.error()});
        return false;
    }
    if (!isBoundTo(log, library_, path_)) {
        unload(log);
        return false;
    }
    log.verbose(module::binary, {"Loaded FMU binary from ", joined(directory, file)});
    log.verbose(module::binary, {"Loading functions for the co-simulation interface"});
    Resolver resolver(log, library_);
    resolveCommon(resolver, functions_);
    checkCapabilities(resolver, capabilities);
    resolveCoSimulation(resolver, functions_);
    if (!resolver.isComplete()) {
        unload(log);
        return false;
    }
    log.verbose(module::library, {"Successfully loaded all the interface functions"});
    return true;
}

void Binary::unload(const Log& log) {
    if (!isLoaded()) {
        return;
    }
    functions_ = {};
    if (library_.close()) {
        log.verbose(module::binary, {"Successfully unloaded FMU binary"});
    } else {
        log.error(module::binary, {"Could not free the FMU binary: ", library_.error()});
    }
}

bool Binary::isCodeLeft() const {
    return !path_.empty() && platform::SharedLibrary::isLoaded(path_);
}

} // namespace fmi_import
