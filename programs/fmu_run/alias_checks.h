#pragma once

#include "programs/fmu_run/description_findings.h"

namespace fmu_run {

/// Checks the variables that share a value reference (FMI 2.0 section 2.2.7): those of one type are
/// one variable under several names, and a Boolean is set through the Integer function.
void checkAliases(const DescribedModel& model, DescriptionFindings& findings);

} // namespace fmu_run
