#pragma once

#include "programs/fmu_run/fmu_description.h"

#include <string>

namespace fmu_run {

/// The variable called `name`.
///
/// @throws program_support::InputError beginning with `place`, with the nearest name, when there is
///         none.
const Variable& requireVariable(const FmuDescription& fmu, const std::string& name,
                                const std::string& place);

} // namespace fmu_run
