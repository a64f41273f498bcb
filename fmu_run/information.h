#pragma once

#include "fmu_run/model_information.h"

#include <ostream>

namespace fmu_run {

/// Prints what the FMU is and its variables as aligned tables for people.
void printInfoTable(std::ostream& stream, const ModelInformation& model);

/// Prints the same as JSON (UTF-8) for programs. Values have their JSON types, what the FMU does
/// not give is null.
void printInfoJson(std::ostream& stream, const ModelInformation& model);

/// Prints a parameters file with the start value of every parameter, each below a comment with its
/// description and unit.
void printParametersFile(std::ostream& stream, const ModelInformation& model);

} // namespace fmu_run
