#pragma once

#include "programs/fmu_run/description_findings.h"

namespace fmu_run {

/// Checks that ModelStructure (FMI 2.0 section 2.2.8) lists what it must, once, and nothing else.
void checkStructure(const DescribedModel& model, DescriptionFindings& findings);

} // namespace fmu_run
