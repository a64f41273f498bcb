#pragma once

#include "fmi_tools.h"

#include <cstdint>
#include <fmilib.h>
#include <string>
#include <variant>

namespace fmu_run {

/// A value in the form the runtime's setters take: Integer, Boolean (1 or 0) and Enumeration as
/// integer.
using VariableValue = std::variant<double, std::int32_t, std::string>;

/// Reads `text` strictly as a value of `type`; a Boolean is true, false, 1 or 0.
///
/// @throws program_support::InputError naming `place`, such as "--start-value radius".
VariableValue parseValue(const std::string& text, fmi2_base_type_enu_t type,
                         const std::string& place);

/// The value as parseValue() reads it; a Boolean as 1 or 0.
std::string textOf(const VariableValue& value);

/// Sets a variable at `time` (seconds).
///
/// @throws RunFailure naming variable and value when the FMU refuses.
void setVariable(FmiToolsInstance* fmu, const std::string& name, const VariableValue& value,
                 double time);

} // namespace fmu_run
