#include "FMI/fmi_version.h"
#include "FMI2/fmi2_enums.h"

#include <array>

namespace {

/// The name at `value`, counted from 0, or `other`.
template <std::size_t Size>
const char* nameAt(const std::array<const char*, Size>& names, int value, const char* other) {
    const auto index = static_cast<unsigned>(value);
    return index < Size ? names[index] : other;
}

} // namespace

const char* fmi_version_to_string(fmi_version_enu_t v) {
    return nameAt(std::array{"unknown", "1.0", "2.0", "3.0"}, v, "unknown");
}

const char* fmi2_status_to_string(fmi2_status_t status) {
    return nameAt(std::array{"OK", "Warning", "Discard", "Error", "Fatal", "Pending"}, status,
                  "Undefined");
}

const char* fmi2_fmu_kind_to_string(fmi2_fmu_kind_enu_t kind) {
    return nameAt(
        std::array{"Unknown", "ModelExchange", "CoSimulation", "ModelExchange and CoSimulation"},
        kind, "Unknown");
}

const char* fmi2_base_type_to_string(fmi2_base_type_enu_t type) {
    return nameAt(std::array{"Real", "Integer", "Boolean", "String", "Enumeration"}, type, "Error");
}

const char* fmi2_causality_to_string(fmi2_causality_enu_t causality) {
    return nameAt(
        std::array{"parameter", "calculatedParameter", "input", "output", "local", "independent"},
        causality, "Unknown");
}

const char* fmi2_variability_to_string(fmi2_variability_enu_t variability) {
    return nameAt(std::array{"constant", "fixed", "tunable", "discrete", "continuous"}, variability,
                  "Unknown");
}

const char* fmi2_initial_to_string(fmi2_initial_enu_t initial) {
    return nameAt(std::array{"exact", "approx", "calculated"}, initial, "Undefined");
}
