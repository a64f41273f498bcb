#include "FMI/fmi_version.h"
#include "FMI2/fmi2_enums.h"

#include <array>
#include <cstddef>

namespace {

/// The name at `value`, counted from 0, or `other`.
template <std::size_t Size>
const char* nameAt(const std::array<const char*, Size>& names, int value, const char* other) {
    const auto index = static_cast<unsigned>(value);
    return index < Size ? names[index] : other;
}

} // namespace

const char* fmi_version_to_string(fmi_version_enu_t v) {
    static constexpr std::array names{"unknown", "1.0", "2.0", "3.0"};
    return nameAt(names, v, "unknown");
}

const char* fmi2_status_to_string(fmi2_status_t status) {
    static constexpr std::array names{"OK", "Warning", "Discard", "Error", "Fatal", "Pending"};
    return nameAt(names, status, "Undefined");
}

const char* fmi2_fmu_kind_to_string(fmi2_fmu_kind_enu_t kind) {
    static constexpr std::array names{"Unknown", "ModelExchange", "CoSimulation",
                                      "ModelExchange and CoSimulation"};
    return nameAt(names, kind, "Unknown");
}

const char* fmi2_base_type_to_string(fmi2_base_type_enu_t type) {
    static constexpr std::array names{"Real", "Integer", "Boolean", "String", "Enumeration"};
    return nameAt(names, type, "Error");
}

const char* fmi2_causality_to_string(fmi2_causality_enu_t causality) {
    static constexpr std::array names{"parameter", "calculatedParameter", "input", "output",
                                      "local",     "independent"};
    return nameAt(names, causality, "Unknown");
}

const char* fmi2_variability_to_string(fmi2_variability_enu_t variability) {
    static constexpr std::array names{"constant", "fixed", "tunable", "discrete", "continuous"};
    return nameAt(names, variability, "Unknown");
}

const char* fmi2_initial_to_string(fmi2_initial_enu_t initial) {
    static constexpr std::array names{"exact", "approx", "calculated"};
    return nameAt(names, initial, "Undefined");
}
