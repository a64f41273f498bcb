#pragma once

#include "fmi_tools.h"
#include "fmu_run/model_information.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <variant>

namespace fmu_run {

/// The FMU or its library failed, as opposed to what the user gave. Its text says what failed.
struct RunFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A value in the form the runtime's setters take: Integer, Boolean (1 or 0) and Enumeration as
/// integer.
using VariableValue = std::variant<double, std::int32_t, std::string>;

/// Reads `text` strictly as a value of `type`; a Boolean is true, false, 1 or 0. Throws InputError
/// naming `place`, such as "--start-value radius".
VariableValue parseValue(const std::string& text, VariableType type, const std::string& place);

/// Sets a variable. Throws RunFailure naming variable and value when the FMU refuses.
void setVariable(FmiToolsInstance* fmu, const std::string& name, const VariableValue& value);

/// The variable called `name`. Throws InputError beginning with `place`, with the nearest name,
/// when there is none.
const Variable& requireVariable(const ModelInformation& model, const std::string& name,
                                const std::string& place);

} // namespace fmu_run
