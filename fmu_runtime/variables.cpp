#include "fmu_runtime/instance.h"
#include "platform/plain_number.h"

#include <optional>

using namespace fmu_runtime;

namespace {

/// The kind of a variable as a text is converted for it.
enum class ValueKind { real, integer, boolean, string };

std::optional<ValueKind> lookupVariableKind(const FmiToolsInstance& instance, const char* name) {
    fmi2_import_variable_t* variable = instance.slave.find(name);
    if (variable == nullptr) {
        return std::nullopt;
    }
    switch (fmi2_import_get_variable_base_type(variable)) {
    case fmi2_base_type_real:
        return ValueKind::real;
    case fmi2_base_type_int:
    case fmi2_base_type_enum:
        return ValueKind::integer;
    case fmi2_base_type_bool:
        return ValueKind::boolean;
    case fmi2_base_type_str:
        return ValueKind::string;
    default:
        return std::nullopt;
    }
}

std::int32_t failAccess(FmiToolsInstance* instance, const char* reason, const char* name) {
    logRuntime(instance, levels::error, LogMessage(reason).add(name));
    return variableAccessFailed;
}

/// Sets a variable through the FMI function of the value's type, whatever the variable's own type
/// is: the FMU decides.
template <typename Value>
std::int32_t setVariable(FmiToolsInstance* instance, const char* name, Value value) {
    if (instance == nullptr) {
        return success;
    }
    return guarded<std::int32_t>(variableAccessFailed, [&]() -> std::int32_t {
        fmi2_import_variable_t* variable = instance->slave.find(name);
        if (variable == nullptr) {
            return failAccess(instance, "Could not find input ", name);
        }
        if (instance->slave.set(fmi2_import_get_variable_vr(variable), value) != fmi2_status_ok) {
            return failAccess(instance, "Failed to set input ", name);
        }
        logRuntime(instance, levels::ok, LogMessage("Set input ").add(name).add("=").add(value));
        return success;
    });
}

/// Reads a variable through the FMI function of the value's type; `value` is written only on
/// success.
template <typename Value>
std::int32_t getVariable(FmiToolsInstance* instance, const char* name, Value* value) {
    if (instance == nullptr) {
        return success;
    }
    return guarded<std::int32_t>(variableAccessFailed, [&]() -> std::int32_t {
        fmi2_import_variable_t* variable = instance->slave.find(name);
        if (variable == nullptr) {
            return failAccess(instance, "Could not find output ", name);
        }
        Value read{};
        if (value == nullptr ||
            instance->slave.get(fmi2_import_get_variable_vr(variable), read) != fmi2_status_ok) {
            return failAccess(instance, "Failed to get output ", name);
        }
        *value = read;
        return success;
    });
}

/// A text that is no number counts as 0: callers of this interface rely on it.
std::int32_t setVariableFromText(FmiToolsInstance* instance, ValueKind kind, const char* name,
                                 const char* text) {
    switch (kind) {
    case ValueKind::real:
        return fmiToolsSetRealVariableValue(instance, name, platform::realOf(text));
    case ValueKind::integer:
    case ValueKind::boolean: // Callers expect Booleans to go through the integer function.
        return fmiToolsSetIntegerVariableValue(instance, name, platform::integerOf(text));
    case ValueKind::string:
        return fmiToolsSetStringVariableValue(instance, name, text);
    }
    return variableAccessFailed;
}

} // namespace

std::int32_t fmiToolsGetVariableExists(FmiToolsInstance* instance, const char* name,
                                       std::int32_t* exists) {
    if (exists != nullptr) {
        *exists = instance != nullptr && instance->slave.find(name) != nullptr ? 1 : 0;
    }
    return success;
}

std::int32_t fmiToolsSetVariableValue(FmiToolsInstance* instance, const char* name,
                                      const char* value) {
    if (instance == nullptr) {
        return success;
    }
    const auto kind = lookupVariableKind(*instance, name);
    if (!kind || value == nullptr) {
        return variableAccessFailed;
    }
    // What the setter answers is in the log; the caller is only told whether it was tried.
    static_cast<void>(setVariableFromText(instance, *kind, name, value));
    return success;
}

std::int32_t fmiToolsSetRealVariableValue(FmiToolsInstance* instance, const char* name,
                                          double value) {
    return setVariable(instance, name, value);
}

std::int32_t fmiToolsSetIntegerVariableValue(FmiToolsInstance* instance, const char* name,
                                             std::int32_t value) {
    return setVariable(instance, name, value);
}

std::int32_t fmiToolsSetStringVariableValue(FmiToolsInstance* instance, const char* name,
                                            const char* value) {
    return setVariable(instance, name, value);
}

// Reading a Real leaves a log line, the other types do not: outputs of a step are Reals, and the
// line records the transfer.
std::int32_t fmiToolsGetRealVariableValue(FmiToolsInstance* instance, const char* name,
                                          double* value) {
    const std::int32_t result = getVariable(instance, name, value);
    if (instance != nullptr && result == success) {
        logRuntime(instance, levels::ok,
                   LogMessage("Fetched output ").add(name).add("=").add(*value));
    }
    return result;
}

std::int32_t fmiToolsGetIntegerVariableValue(FmiToolsInstance* instance, const char* name,
                                             std::int32_t* value) {
    return getVariable(instance, name, value);
}

std::int32_t fmiToolsGetStringVariableValue(FmiToolsInstance* instance, const char* name,
                                            const char** value) {
    return getVariable(instance, name, value);
}
