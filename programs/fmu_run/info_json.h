#pragma once

#include "programs/fmu_run/fmu_description.h"

#include <ostream>

namespace fmu_run {

/// Prints what the FMU is and its variables as JSON (UTF-8) for programs. Values have their JSON
/// types, what the FMU does not give is null.
void printInfoJson(std::ostream& stream, const FmuDescription& fmu);

} // namespace fmu_run
