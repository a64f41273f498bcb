#include "fmu_runtime/instance.h"

#include <limits>

using namespace fmu_runtime;

namespace {

std::int32_t resultOf(fmi2_status_t status, std::int32_t failure) {
    return status == fmi2_status_ok ? success : failure;
}

/// Logs `message` as an error when `result` is one; hands the result on.
std::int32_t reported(FmiToolsInstance* instance, std::int32_t result, const char* message) {
    if (result != success) {
        logRuntime(instance, levels::error, message);
    }
    return result;
}

/// The experiment begins where the FMU is, which is 0 after instantiation; the configured start
/// time only says where fmiToolsSimulate begins.
std::int32_t setupExperiment(FmiToolsInstance* instance) {
    return resultOf(instance->slave.setupExperiment(instance->currentTime), initialisationFailed);
}

std::int32_t enterInitialization(FmiToolsInstance* instance) {
    logRuntime(instance, levels::ok, "Entering initialisation mode");
    return reported(instance,
                    resultOf(instance->slave.enterInitializationMode(), initialisationFailed),
                    "Failed to enter initialisation mode");
}

std::int32_t exitInitialization(FmiToolsInstance* instance) {
    logRuntime(instance, levels::ok, "Exiting initialisation mode");
    return reported(instance,
                    resultOf(instance->slave.exitInitializationMode(), initialisationFailed),
                    "Failed to exit initialisation mode");
}

std::int32_t startInitialization(FmiToolsInstance* instance) {
    logRuntime(instance, levels::ok, "Setting up experiment");
    const std::int32_t result =
        reported(instance, setupExperiment(instance), "Failed to setup experiment");
    if (result != success) {
        return result;
    }
    logRuntime(instance, levels::ok, "Starting FMU initialisation");
    return enterInitialization(instance);
}

std::int32_t endInitialization(FmiToolsInstance* instance) {
    const std::int32_t result =
        reported(instance, exitInitialization(instance), "Failed to initialise FMU");
    if (result == success) {
        logRuntime(instance, levels::ok, "Initialised FMU");
    }
    return result;
}

/// Both halves in one. Their closing lines appear twice, once for the second half and once for the
/// whole.
std::int32_t initialize(FmiToolsInstance* instance) {
    logRuntime(instance, levels::ok, "Initialising FMU");
    std::int32_t result = startInitialization(instance);
    if (result == success) {
        result = endInitialization(instance);
    }
    if (reported(instance, result, "Failed to initialise FMU") == success) {
        logRuntime(instance, levels::ok, "Initialised FMU");
    }
    return result;
}

/// Steps the FMU to `time` unless that is no step at all.
std::int32_t doStepTo(FmiToolsInstance& instance, double time) {
    const double stepSize = time - instance.currentTime;
    if (!(stepSize > std::numeric_limits<double>::epsilon())) {
        return success;
    }
    const auto status = instance.slave.doStep(instance.currentTime, stepSize);
    if (status == fmi2_status_ok) {
        instance.currentTime = time; // Not the sum, which would drift away from the caller's times.
    }
    return resultOf(status, stepFailed);
}

std::int32_t advanceTo(FmiToolsInstance* instance, double time) {
    logRuntime(instance, levels::ok, LogMessage("Attempting step to t=").add(time));
    const std::int32_t result =
        reported(instance, doStepTo(*instance, time), "Attempted step failed");
    return result != success
               ? result
               : reported(instance, writeResultsRow(*instance), "Results logging failed");
}

/// A failed step does not end the grid: the next one is attempted from where the FMU is.
void simulate(FmiToolsInstance* instance) {
    const double interval = instance->logInterval;
    const double end = instance->endTime;
    logRuntime(instance, levels::ok, LogMessage("Simulating to t=").add(end));
    double time = instance->startTime;
    while (end >= time) {
        static_cast<void>(advanceTo(instance, time));
        time += interval;
    }
}

template <typename Operation>
std::int32_t initialisation(FmiToolsInstance* instance, Operation operation) {
    if (instance == nullptr) {
        return notAvailable;
    }
    return guarded<std::int32_t>(initialisationFailed, [&] { return operation(instance); });
}

} // namespace

std::int32_t fmiToolsInitialize(FmiToolsInstance* instance) {
    return initialisation(instance, initialize);
}

std::int32_t fmiToolsStartInitialization(FmiToolsInstance* instance) {
    return initialisation(instance, startInitialization);
}

std::int32_t fmiToolsEndInitialization(FmiToolsInstance* instance) {
    return initialisation(instance, endInitialization);
}

std::int32_t fmiToolsSimulateToT(FmiToolsInstance* instance, double time) {
    if (instance == nullptr) {
        return success;
    }
    return guarded<std::int32_t>(stepFailed, [&] { return advanceTo(instance, time); });
}

std::int32_t fmiToolsSimulate(FmiToolsInstance* instance) {
    if (instance == nullptr) {
        return success;
    }
    return guarded<std::int32_t>(success, [&] {
        simulate(instance);
        return success;
    });
}
