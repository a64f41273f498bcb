#include "programs/fmu_run/shared_references.h"

#include "programs/support/input_error.h"

#include <iostream>

namespace fmu_run {

SharedReferences::SharedReferences(const FmuDescription& fmu) {
    for (const auto& variable : fmu.variables) {
        if (variable.type == fmi2_base_type_int || variable.type == fmi2_base_type_enum) {
            integers_.emplace(variable.valueReference, &variable);
        }
    }
}

const Variable* SharedReferences::setInsteadOf(const Variable& variable) const {
    const auto found = integers_.find(variable.valueReference);
    return variable.type == fmi2_base_type_bool && found != integers_.end() ? found->second
                                                                            : nullptr;
}

void SharedReferences::requireOwn(const Variable& variable, const std::string& place,
                                  bool quiet) const {
    if (const auto* other = setInsteadOf(variable)) {
        throw program_support::InputError(
            place + ": the Boolean '" + variable.name + "' has the value reference of '" +
            other->name + "', which would be set instead; leave it at its start value, or have " +
            "the FMU exported with value references of its own for Booleans");
    }
    if (variable.type == fmi2_base_type_bool && !quiet) {
        std::cerr << "fmu_run: warning: " + place + ": the Boolean '" + variable.name +
                         "' is set through the FMU's Integer function; an FMU that keeps Booleans "
                         "apart refuses that\n";
    }
}

} // namespace fmu_run
