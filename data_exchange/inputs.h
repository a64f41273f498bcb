#pragma once

#include "fmi_tools.h"

#include <cstdint>

class ModelSetup;

namespace data_exchange {

/// Sets the FMU's inputs from the coupled conditions of the host, in their order.
///
/// Tuple 0 of each condition is the current value. A condition whose quantity has one component
/// sets the Real input of the condition's name. Any other is a vector and sets the three inputs
/// name[1] to name[3]; with "-noarrayinputs" it too sets the one input, from its first component.
/// Without a loaded FMU nothing happens.
///
/// @param fmu         the handle; null for none
/// @param arrayInputs false for "-noarrayinputs"
/// @param modelSetup  the host's coupled conditions, borrowed for the call
/// @return the last result of fmiToolsSetRealVariableValue(), 0 without conditions; the first
///         negative one ends the transfer, with the inputs before it set
/// @throws std::logic_error when an object of the host is missing, and whatever the host throws
std::int32_t setFmuInputs(FmiToolsInstance* fmu, bool arrayInputs, const ModelSetup* modelSetup);

} // namespace data_exchange
