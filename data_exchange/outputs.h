#pragma once

#include "fmi_tools.h"

#include <cstdint>

class ModelSetup;

namespace data_exchange {

/// Fills the output results of the host from the FMU, in their order.
///
/// An output result takes the Real output of its name into component 0 of tuple 0. With
/// "-outputsarearrays" it takes the outputs name[1] to name[3] into the components 0 to 2; only a
/// result whose quantity is named "PressureGlobal" then takes name[1] alone. Without a loaded FMU
/// every component becomes 0.
///
/// @param fmu         the handle; null for none
/// @param asArrays    true for "-outputsarearrays"
/// @param modelSetup  the host's output results, borrowed for the call
/// @return the last result of fmiToolsGetRealVariableValue(), 0 without output results; the first
///         negative one ends the transfer, with the results before it written
/// @throws std::logic_error when an object of the host is missing, and whatever the host throws
std::int32_t getFmuOutputs(FmiToolsInstance* fmu, bool asArrays, const ModelSetup* modelSetup);

} // namespace data_exchange
