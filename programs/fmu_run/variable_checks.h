#pragma once

#include "programs/fmu_run/description_findings.h"

namespace fmu_run {

/// Checks units, declared types and each variable by itself: causality, variability, initial, start
/// value and its bounds, derivative, name.
void checkVariables(const DescribedModel& model, DescriptionFindings& findings);

/// What an initial that is not given is; "unknown" where there is none.
fmi2_initial_enu_t initialOf(const DescribedVariable& variable);

/// The unit of a variable, also by its declared type; null where it has none.
const char* unitOf(const DescribedModel& model, const DescribedType& element);

/// Position of the variable that an index, counted from 1, is of; nothing where there is none.
std::optional<std::size_t> positionIn(const DescribedModel& model, const char* index);

} // namespace fmu_run
