#include "FMI/fmi_import_util.h"
#include "fmi_import/c_border.h"
#include "fmi_import/log.h"
#include "fmi_import/model_description/xml_document.h"
#include "fmi_import/slave/resource_uri.h"
#include "platform/files.h"
#include "platform/temporary_directory.h"

#include <cstring>
#include <system_error>

namespace {

using fmi_import::guarded;
using fmi_import::Log;
namespace fs = std::filesystem;
namespace module = fmi_import::module;

/// A copy of `text` that the application frees; null when memory ran out.
char* handOut(const Log& log, const std::string& text) {
    const auto& callbacks = *log.callbacks();
    auto* copy = static_cast<char*>(callbacks.malloc(text.size() + 1));
    return copy != nullptr ? static_cast<char*>(std::memcpy(copy, text.c_str(), text.size() + 1))
                           : nullptr;
}

char* makeTemporaryDirectory(const Log& log, const char* parentName, const char* prefix) {
    const fs::path parent =
        parentName != nullptr ? platform::nativePath(parentName) : fs::temp_directory_path();
    std::error_code error;
    if (!fs::is_directory(parent, error)) {
        log.fatal(module::directories,
                  {"Could not change to the directory ", platform::narrowPath(parent)});
        return nullptr;
    }
    const fs::path path = platform::makeUniqueDirectory(fs::canonical(parent),
                                                        prefix != nullptr ? prefix : "fmil", error);
    if (path.empty()) {
        log.fatal(module::directories, {"Could not create a unique temporary directory"});
        return nullptr;
    }
    return handOut(log, platform::narrowPath(path));
}

} // namespace

char* fmi_import_mk_temp_dir(jm_callbacks* cb, const char* systemTempDir, const char* tempPrefix) {
    return guarded<char*>(
        nullptr, [&] { return makeTemporaryDirectory(Log(cb), systemTempDir, tempPrefix); });
}

jm_status_enu_t fmi_import_rmdir(jm_callbacks* cb, const char* dir) {
    if (dir == nullptr) {
        return jm_status_error;
    }
    return guarded(jm_status_error, [&] {
        const Log log(cb);
        log.verbose(module::directories, {"Removing ", dir});
        const std::error_code error = platform::removeDirectory(platform::nativePath(dir));
        if (error) {
            log.error(module::directories, {"Error removing ", dir, " (", error.message(), ")"});
        }
        return error ? jm_status_error : jm_status_success;
    });
}

char* fmi_import_create_URL_from_abs_path(jm_callbacks* cb, const char* absPath) {
    return guarded<char*>(nullptr, [&] {
        return absPath != nullptr
                   ? handOut(Log(cb), fmi_import::fileUri(platform::nativePath(absPath)))
                   : nullptr;
    });
}

char* fmi_import_get_model_description_path(const char* directory,
                                            jm_callbacks* callBackFunctions) {
    return guarded<char*>(nullptr, [&] {
        return directory != nullptr
                   ? handOut(Log(callBackFunctions), fmi_import::modelDescriptionPath(directory))
                   : nullptr;
    });
}
