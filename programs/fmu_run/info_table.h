#pragma once

#include "programs/fmu_run/fmu_description.h"

#include <ostream>

namespace fmu_run {

/// Prints what the FMU is and its variables as aligned tables for people.
void printInfoTable(std::ostream& stream, const FmuDescription& fmu);

} // namespace fmu_run
