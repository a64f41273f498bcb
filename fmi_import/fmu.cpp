#include "fmi_import/fmu.h"

#include "fmi_import/c_border.h"
#include "fmi_import/context.h"
#include "fmi_import/model_description/model_description_reader.h"
#include "fmi_import/slave/resource_uri.h"
#include "platform/files.h"
#include "platform/path_style.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <system_error>
#include <utility>

namespace {

using fmi_import::Log;
namespace module = fmi_import::module;
namespace fs = std::filesystem;

constexpr std::size_t roomForFileNames = 20;

/// Fills the paths of `fmu`; false, with a message, when its directory cannot be used.
bool locate(fmi2_import_t& fmu) {
    const auto path = platform::nativePath(fmu.directory);
    std::error_code error;
    if (!fs::is_directory(path, error)) {
        fmu.log.fatal(module::directories, {"Could not change to the directory ", fmu.directory});
        fmu.log.fatal(module::library, {"Could not allocated memory"});
        return false;
    }
    fmu.absoluteDirectory = platform::narrowPath(fs::absolute(path).make_preferred());
    fmu.resourceUri = fmi_import::fileUri(fs::canonical(path)) + "/resources";
    return true;
}

/// Terminals and icons are for graphical tools; their absence is only told.
void lookForTerminals(const fmi2_import_t& fmu) {
    const char separator = platform::nativePaths().separator;
    const std::string path =
        fmu.directory + separator + "terminalsAndIcons" + separator + "terminalsAndIcons.xml";
    std::error_code error;
    if (!fs::exists(platform::nativePath(path), error)) {
        fmu.log.info(module::version,
                     {"Could not find or open terminalsAndIcons.xml: '", path, "'. Continuing."});
    }
}

bool readFmu(fmi2_import_t& fmu, bool checkNames) {
    if (!locate(fmu)) {
        return false;
    }
    auto description = fmi_import::readModelDescription(fmu.log, fmu.directory, checkNames);
    if (!description) {
        return false;
    }
    fmu.description = std::move(*description);
    lookForTerminals(fmu);
    fmu.log.verbose(module::library, {"Parsing finished successfully"});
    return true;
}

struct FreeFmu {
    void operator()(fmi2_import_t* fmu) const { fmi2_import_free(fmu); }
};

fmi2_import_t* openFmu(const fmi_xml_context_t& context, const char* directory) {
    const Log log(context.callbacks);
    if (std::strlen(directory) + roomForFileNames > FILENAME_MAX) {
        log.fatal(module::library, {"Directory path for FMU is too long"});
        return nullptr;
    }
    log.verbose(module::library, {"Parsing model description XML"});
    std::unique_ptr<fmi2_import_t, FreeFmu> fmu(new fmi2_import_t{log, directory, {}, {}, {}, {}});
    return readFmu(*fmu, context.configuration == FMI_IMPORT_NAME_CHECK) ? fmu.release() : nullptr;
}

} // namespace

fmi2_import_t* fmi2_import_parse_xml(fmi_import_context_t* context, const char* dirPath,
                                     fmi2_xml_callbacks_t*) {
    if (context == nullptr || dirPath == nullptr) {
        return nullptr;
    }
    return fmi_import::guarded<fmi2_import_t*>(nullptr, [&] { return openFmu(*context, dirPath); });
}

void fmi2_import_free(fmi2_import_t* fmu) {
    if (fmu != nullptr) {
        fmu->log.verbose(module::library, {"Releasing allocated library resources"});
        fmi2_import_destroy_dllfmu(fmu);
        if (fmu->binary.isCodeLeft()) {
            static_cast<void>(fmu->callbacks.release());
        }
        delete fmu;
    }
}

const char* fmi2_import_get_last_error(fmi2_import_t* fmu) {
    return fmu != nullptr ? fmu->log.callbacks()->errMessageBuffer : "";
}
