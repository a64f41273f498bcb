#pragma once

#include "programs/fmu_run/fmu_description.h"

#include <ostream>

namespace fmu_run {

/// Prints a parameters file with the start value of every parameter, each below a comment with its
/// description and unit.
void printParametersFile(std::ostream& stream, const FmuDescription& fmu);

} // namespace fmu_run
