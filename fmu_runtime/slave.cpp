#include "fmu_runtime/slave.h"

#include "platform/files.h"
#include "platform/path_style.h"
#include "platform/shared_library.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace fmu_runtime {

namespace {

jm_callbacks libraryCallbacks(jm_logger_f logger) {
    jm_callbacks callbacks{};
    callbacks.malloc = std::malloc;
    callbacks.calloc = std::calloc;
    callbacks.realloc = std::realloc;
    callbacks.free = std::free;
    callbacks.logger = logger;
    callbacks.log_level = jm_log_level_all;
    callbacks.context = nullptr;
    return callbacks;
}

/// Where the library of this platform is (FMI 2.0 section 2.3).
std::string binaryPath(const std::string& unpackDirectory, const std::string& identifier) {
    const std::string separator(1, platform::nativePaths().separator);
    return unpackDirectory + separator + "binaries" + separator +
           platform::SharedLibrary::fmiPlatform() + separator + identifier +
           platform::SharedLibrary::suffix();
}

/// The one place where exceptions of an FMU's code end: the answer of `call`, or `failure` where
/// one leaves it.
template <typename Answer, typename Call>
Answer caught(Answer failure, Call call) noexcept {
    try {
        return call();
    } catch (...) {
        return failure;
    }
}

} // namespace

bool Slave::open(const std::string& fmuPath, const std::string& unpackDirectory,
                 jm_logger_f libraryLogger) {
    libraryCallbacks_ = libraryCallbacks(libraryLogger);
    context_ = fmi_import_allocate_context(&libraryCallbacks_);
    if (context_ == nullptr ||
        fmi_import_get_fmi_version(context_, fmuPath.c_str(), unpackDirectory.c_str()) !=
            fmi_version_2_0_enu) {
        return false;
    }
    fmu_ = fmi2_import_parse_xml(context_, unpackDirectory.c_str(), nullptr);
    if (fmu_ == nullptr) {
        return false;
    }
    if (fmi2_import_get_fmu_kind(fmu_) == fmi2_fmu_kind_me) {
        libraryLogger(nullptr, "FMITools", jm_log_level_error,
                      "The FMU offers Model Exchange only; export it for Co-Simulation");
        return false;
    }
    binaryPath_ = binaryPath(unpackDirectory, fmi2_import_get_model_identifier_CS(fmu_));
    return true;
}

jm_status_enu_t Slave::loadBinary(const fmi2_callback_functions_t& callbacks) {
    return fmi2_import_create_dllfmu(fmu_, fmi2_fmu_kind_cs, &callbacks);
}

jm_status_enu_t Slave::instantiate(const char* instanceName) {
    const auto status = caught(jm_status_error, [&] {
        return fmi2_import_instantiate(fmu_, instanceName, fmi2_cosimulation, nullptr, fmi2_false);
    });
    instantiated_ = status != jm_status_error;
    return status;
}

void Slave::release() {
    if (std::exchange(instantiated_, false)) {
        caught(fmi2_status_fatal, [&] { return fmi2_import_terminate(fmu_); });
        caught(fmi2_status_fatal, [&] {
            fmi2_import_free_instance(fmu_);
            return fmi2_status_ok;
        });
    }
    fmi2_import_free(std::exchange(fmu_, nullptr));
    if (context_ != nullptr) {
        fmi_import_free_context(std::exchange(context_, nullptr));
    }
}

bool Slave::isCodeLeft() const {
    return platform::SharedLibrary::isLoaded(binaryPath_);
}

const char* Slave::generationTool() const {
    return fmi2_import_get_generation_tool(fmu_);
}

bool Slave::isOnlyOncePerProcess() const {
    return fmi2_import_get_capability(fmu_, fmi2_cs_canBeInstantiatedOnlyOncePerProcess) != 0;
}

std::string Slave::identity() const {
    return std::string(fmi2_import_get_model_identifier_CS(fmu_)) + ' ' +
           fmi2_import_get_GUID(fmu_);
}

fmi2_import_variable_t* Slave::find(const char* name) const {
    return name == nullptr ? nullptr : fmi2_import_get_variable_by_name(fmu_, name);
}

/// The log says that a call failed; which of FMI's statuses it was is told on standard error.
template <typename Call>
fmi2_status_t Slave::statusOf(const char* function, Call call) {
    if (!instantiated_) {
        std::fputs("fmi2Instantiate returned no instance\n", stderr);
        return fmi2_status_fatal;
    }
    const auto status = caught(fmi2_status_fatal, call);
    if (status != fmi2_status_ok) {
        std::fprintf(stderr, "%s returned %s\n", function, fmi2_status_to_string(status));
    }
    return status;
}

fmi2_status_t Slave::setupExperiment(double startTime) {
    return statusOf("fmi2SetupExperiment", [&] {
        return fmi2_import_setup_experiment(fmu_, fmi2_false, 0.0, startTime, fmi2_false, 0.0);
    });
}

fmi2_status_t Slave::enterInitializationMode() {
    return statusOf("fmi2EnterInitializationMode",
                    [&] { return fmi2_import_enter_initialization_mode(fmu_); });
}

fmi2_status_t Slave::exitInitializationMode() {
    return statusOf("fmi2ExitInitializationMode",
                    [&] { return fmi2_import_exit_initialization_mode(fmu_); });
}

fmi2_status_t Slave::doStep(double currentCommunicationPoint, double communicationStepSize) {
    return statusOf("fmi2DoStep", [&] {
        return fmi2_import_do_step(fmu_, currentCommunicationPoint, communicationStepSize,
                                   fmi2_true);
    });
}

fmi2_status_t Slave::set(fmi2_value_reference_t reference, double value) {
    return statusOf("fmi2SetReal",
                    [&] { return fmi2_import_set_real(fmu_, &reference, 1, &value); });
}

fmi2_status_t Slave::set(fmi2_value_reference_t reference, int value) {
    return statusOf("fmi2SetInteger",
                    [&] { return fmi2_import_set_integer(fmu_, &reference, 1, &value); });
}

fmi2_status_t Slave::set(fmi2_value_reference_t reference, const char* value) {
    if (value == nullptr) { // No FMU is prepared for it.
        return fmi2_status_error;
    }
    return statusOf("fmi2SetString",
                    [&] { return fmi2_import_set_string(fmu_, &reference, 1, &value); });
}

fmi2_status_t Slave::get(fmi2_value_reference_t reference, double& value) {
    return statusOf("fmi2GetReal",
                    [&] { return fmi2_import_get_real(fmu_, &reference, 1, &value); });
}

fmi2_status_t Slave::get(fmi2_value_reference_t reference, int& value) {
    return statusOf("fmi2GetInteger",
                    [&] { return fmi2_import_get_integer(fmu_, &reference, 1, &value); });
}

fmi2_status_t Slave::get(fmi2_value_reference_t reference, const char*& value) {
    return statusOf("fmi2GetString",
                    [&] { return fmi2_import_get_string(fmu_, &reference, 1, &value); });
}

} // namespace fmu_runtime
