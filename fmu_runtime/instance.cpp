#include "fmu_runtime/instance.h"

using namespace fmu_runtime;

namespace {

/// Stores a value of the caller's in a field of the record.
template <typename Field, typename Value>
std::int32_t store(FmiToolsInstance* instance, Field FmiToolsInstance::*field, Value value,
                   std::int32_t answerToNull) {
    if (instance == nullptr) {
        return answerToNull;
    }
    instance->*field = value;
    return success;
}

} // namespace

std::int32_t fmiToolsEnableDebugLogs(FmiToolsInstance* instance, std::int32_t enabled) {
    return store(instance, &FmiToolsInstance::debugLogsEnabled, enabled != 0, notAvailable);
}

const char* fmiToolsGetGenerationTool(FmiToolsInstance* instance) {
    return instance == nullptr ? nullptr : instance->slave.generationTool();
}

std::int32_t fmiToolsAttachUserData(FmiToolsInstance* instance, void* userData) {
    return store(instance, &FmiToolsInstance::userData, userData, notAvailable);
}

std::int32_t fmiToolsGetUserData(FmiToolsInstance* instance, void** userData) {
    if (instance == nullptr || userData == nullptr) {
        return notAvailable;
    }
    *userData = instance->userData;
    return success;
}

std::int32_t fmiToolsSetStartTime(FmiToolsInstance* instance, double time) {
    return store(instance, &FmiToolsInstance::startTime, time, notAvailable);
}

std::int32_t fmiToolsSetEndTime(FmiToolsInstance* instance, double time) {
    return store(instance, &FmiToolsInstance::endTime, time, notAvailable);
}

// Unlike its neighbours this one takes a null handle for success; callers rely on the difference.
std::int32_t fmiToolsSetLogInterval(FmiToolsInstance* instance, double interval) {
    return store(instance, &FmiToolsInstance::logInterval, interval, success);
}
