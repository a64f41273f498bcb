#include "fmi_import/context.h"

#include "fmi_import/archive/archive.h"
#include "fmi_import/c_border.h"
#include "fmi_import/log.h"
#include "fmi_import/model_description/version_detection.h"

namespace {

using fmi_import::Log;
namespace module = fmi_import::module;

bool isEmpty(const char* text) {
    return text == nullptr || *text == '\0';
}

fmi_version_enu_t unpackAndDetect(const Log& log, const char* fileName, const char* dirName) {
    log.verbose(module::library, {"Detecting FMI standard version"});
    if (isEmpty(dirName)) {
        log.fatal(module::library, {"No temporary directory name specified"});
        return fmi_version_unknown_enu;
    }
    if (fileName != nullptr && isEmpty(fileName)) {
        log.fatal(module::library, {"No FMU filename specified"});
        return fmi_version_unknown_enu;
    }
    if (fileName != nullptr && !fmi_import::unpackArchive(log, fileName, dirName)) {
        return fmi_version_unknown_enu;
    }
    const fmi_version_enu_t version = fmi_import::detectVersion(log, dirName);
    log.info(module::library,
             {"XML specifies FMI standard version ", fmi_version_to_string(version)});
    if (version != fmi_version_2_0_enu && version != fmi_version_unknown_enu) {
        log.fatal(module::library, {"The FMU follows FMI ", fmi_version_to_string(version),
                                    "; only FMI 2.0 can be loaded"});
    }
    return version;
}

} // namespace

fmi_import_context_t* fmi_import_allocate_context(jm_callbacks* callbacks) {
    return fmi_import::guarded<fmi_import_context_t*>(nullptr, [&] {
        const Log log(callbacks);
        log.verbose(module::library, {"Allocating FMIL context"});
        return new fmi_import_context_t{log.callbacks()};
    });
}

void fmi_import_free_context(fmi_import_context_t* c) {
    delete c;
}

void fmi_import_set_configuration(fmi_import_context_t* c, int conf) {
    if (c != nullptr) {
        c->configuration = conf;
    }
}

fmi_version_enu_t fmi_import_get_fmi_version(fmi_import_context_t* c, const char* fileName,
                                             const char* dirName) {
    if (c == nullptr) {
        return fmi_version_unknown_enu;
    }
    return fmi_import::guarded(fmi_version_unknown_enu, [&] {
        return unpackAndDetect(Log(c->callbacks), fileName, dirName);
    });
}
