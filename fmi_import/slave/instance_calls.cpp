#include "fmi_import/c_border.h"
#include "fmi_import/fmu.h"

namespace {

namespace module = fmi_import::module;

void reportNotLoaded(const fmi2_import_t& fmu) {
    fmu.log.error(module::library, {"FMU CAPI is not loaded"});
}

/// Kept out of the way of the calls that work.
fmi2_status_t refuse(const fmi2_import_t* fmu) {
    if (fmu != nullptr && !fmu->binary.isLoaded()) {
        reportNotLoaded(*fmu);
    }
    return fmi2_status_fatal;
}

bool hasInstance(const fmi2_import_t* fmu) {
    return fmu != nullptr && fmu->component != nullptr;
}

/// Calls `function` of the FMU's instance; fatal where there is none.
template <typename Function, typename... Arguments>
fmi2_status_t call(fmi2_import_t* fmu, Function fmi_import::FmuFunctions::*function,
                   Arguments... arguments) {
    if (!hasInstance(fmu)) {
        return refuse(fmu);
    }
    return (fmu->binary.functions().*function)(fmu->component, arguments...);
}

/// call(), announced in the log.
template <typename Function, typename... Arguments>
fmi2_status_t announcedCall(const char* name, fmi2_import_t* fmu,
                            Function fmi_import::FmuFunctions::*function, Arguments... arguments) {
    if (hasInstance(fmu)) {
        fmu->log.verbose(module::binary, {"Calling ", name});
    }
    return call(fmu, function, arguments...);
}

fmi2_callback_functions_t ownCallbacks(fmi2_import_t* fmu) {
    const jm_callbacks* callbacks = fmu->log.callbacks();
    return {fmi2_log_forwarding, callbacks->calloc, callbacks->free, nullptr, fmu};
}

jm_status_enu_t load(fmi2_import_t& fmu, const fmi2_callback_functions_t* callbacks) {
    if (fmu.binary.isLoaded()) {
        fmu.log.warning(module::library, {"FMU binary is already loaded"});
        return jm_status_success;
    }
    *fmu.callbacks = callbacks != nullptr ? *callbacks : ownCallbacks(&fmu);
    const bool loaded =
        fmu.binary.load(fmu.log, fmu.directory, fmu.absoluteDirectory,
                        fmu.description.coSimulationIdentifier, fmu.description.capabilities);
    return loaded ? jm_status_success : jm_status_error;
}

} // namespace

jm_status_enu_t fmi2_import_create_dllfmu(fmi2_import_t* fmu, fmi2_fmu_kind_enu_t fmuKind,
                                          const fmi2_callback_functions_t* callBackFunctions) {
    if (fmu == nullptr) {
        return jm_status_error;
    }
    if (fmuKind == fmi2_fmu_kind_me) {
        fmu->log.fatal(module::library, {"Model Exchange is not supported by this library"});
    }
    if (fmuKind != fmi2_fmu_kind_cs) {
        return jm_status_error;
    }
    return fmi_import::guarded(jm_status_error, [&] { return load(*fmu, callBackFunctions); });
}

void fmi2_import_destroy_dllfmu(fmi2_import_t* fmu) {
    if (fmu != nullptr && fmu->binary.isLoaded()) {
        fmu->log.verbose(module::library, {"Releasing FMU CAPI interface"});
        fmu->component = nullptr;
        fmu->binary.unload(fmu->log);
    }
}

const char* fmi2_import_get_version(fmi2_import_t* fmu) {
    if (fmu == nullptr || !fmu->binary.isLoaded()) {
        refuse(fmu);
        return nullptr;
    }
    return fmu->binary.functions().getVersion();
}

const char* fmi2_import_get_types_platform(fmi2_import_t* fmu) {
    if (fmu == nullptr || !fmu->binary.isLoaded()) {
        refuse(fmu);
        return nullptr;
    }
    fmu->log.verbose(module::binary, {"Calling fmi2GetModelTypesPlatform"});
    return fmu->binary.functions().getTypesPlatform();
}

jm_status_enu_t fmi2_import_instantiate(fmi2_import_t* fmu, fmi2_string_t instanceName,
                                        fmi2_type_t fmuType, fmi2_string_t fmuResourceLocation,
                                        fmi2_boolean_t visible) {
    if (fmu == nullptr || !fmu->binary.isLoaded()) {
        refuse(fmu);
        return jm_status_error;
    }
    const char* resources =
        fmuResourceLocation != nullptr ? fmuResourceLocation : fmu->resourceUri.c_str();
    const bool loggingOn = fmu->log.callbacks()->log_level > jm_log_level_nothing;
    fmu->component = fmu->binary.functions().instantiate(
        instanceName, fmuType, fmu->description.guid, resources, fmu->callbacks.get(), visible,
        loggingOn ? fmi2_true : fmi2_false);
    return fmu->component != nullptr ? jm_status_success : jm_status_error;
}

void fmi2_import_free_instance(fmi2_import_t* fmu) {
    if (hasInstance(fmu)) {
        // Forgotten first: a message sent meanwhile may lead back here.
        fmi2_component_t component = fmu->component;
        fmu->component = nullptr;
        fmu->binary.functions().freeInstance(component);
    }
}

fmi2_status_t fmi2_import_set_debug_logging(fmi2_import_t* fmu, fmi2_boolean_t loggingOn,
                                            size_t nCategories, fmi2_string_t categories[]) {
    return call(fmu, &fmi_import::FmuFunctions::setDebugLogging, loggingOn, nCategories,
                categories);
}

fmi2_status_t fmi2_import_setup_experiment(fmi2_import_t* fmu, fmi2_boolean_t toleranceDefined,
                                           fmi2_real_t tolerance, fmi2_real_t startTime,
                                           fmi2_boolean_t stopTimeDefined, fmi2_real_t stopTime) {
    return announcedCall("fmi2SetupExperiment", fmu, &fmi_import::FmuFunctions::setupExperiment,
                         toleranceDefined, tolerance, startTime, stopTimeDefined, stopTime);
}

fmi2_status_t fmi2_import_enter_initialization_mode(fmi2_import_t* fmu) {
    return announcedCall("fmi2EnterInitializationMode", fmu,
                         &fmi_import::FmuFunctions::enterInitializationMode);
}

fmi2_status_t fmi2_import_exit_initialization_mode(fmi2_import_t* fmu) {
    return announcedCall("fmi2ExitInitializationMode", fmu,
                         &fmi_import::FmuFunctions::exitInitializationMode);
}

fmi2_status_t fmi2_import_terminate(fmi2_import_t* fmu) {
    return call(fmu, &fmi_import::FmuFunctions::terminate);
}

fmi2_status_t fmi2_import_reset(fmi2_import_t* fmu) {
    return call(fmu, &fmi_import::FmuFunctions::reset);
}

fmi2_status_t fmi2_import_do_step(fmi2_import_t* fmu, fmi2_real_t currentCommunicationPoint,
                                  fmi2_real_t communicationStepSize, fmi2_boolean_t newStep) {
    return call(fmu, &fmi_import::FmuFunctions::doStep, currentCommunicationPoint,
                communicationStepSize, newStep);
}

fmi2_status_t fmi2_import_set_real(fmi2_import_t* fmu, const fmi2_value_reference_t vr[],
                                   size_t nvr, const fmi2_real_t value[]) {
    return call(fmu, &fmi_import::FmuFunctions::setReal, vr, nvr, value);
}

fmi2_status_t fmi2_import_set_integer(fmi2_import_t* fmu, const fmi2_value_reference_t vr[],
                                      size_t nvr, const fmi2_integer_t value[]) {
    return call(fmu, &fmi_import::FmuFunctions::setInteger, vr, nvr, value);
}

fmi2_status_t fmi2_import_set_boolean(fmi2_import_t* fmu, const fmi2_value_reference_t vr[],
                                      size_t nvr, const fmi2_boolean_t value[]) {
    return call(fmu, &fmi_import::FmuFunctions::setBoolean, vr, nvr, value);
}

fmi2_status_t fmi2_import_set_string(fmi2_import_t* fmu, const fmi2_value_reference_t vr[],
                                     size_t nvr, const fmi2_string_t value[]) {
    return call(fmu, &fmi_import::FmuFunctions::setString, vr, nvr, value);
}

fmi2_status_t fmi2_import_get_real(fmi2_import_t* fmu, const fmi2_value_reference_t vr[],
                                   size_t nvr, fmi2_real_t value[]) {
    return call(fmu, &fmi_import::FmuFunctions::getReal, vr, nvr, value);
}

fmi2_status_t fmi2_import_get_integer(fmi2_import_t* fmu, const fmi2_value_reference_t vr[],
                                      size_t nvr, fmi2_integer_t value[]) {
    return call(fmu, &fmi_import::FmuFunctions::getInteger, vr, nvr, value);
}

fmi2_status_t fmi2_import_get_boolean(fmi2_import_t* fmu, const fmi2_value_reference_t vr[],
                                      size_t nvr, fmi2_boolean_t value[]) {
    return call(fmu, &fmi_import::FmuFunctions::getBoolean, vr, nvr, value);
}

fmi2_status_t fmi2_import_get_string(fmi2_import_t* fmu, const fmi2_value_reference_t vr[],
                                     size_t nvr, fmi2_string_t value[]) {
    return call(fmu, &fmi_import::FmuFunctions::getString, vr, nvr, value);
}
