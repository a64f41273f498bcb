#pragma once

#include "programs/fmu_run/fmu_description.h"
#include "programs/fmu_run/options.h"
#include "programs/support/step_grid.h"

namespace fmu_run {

/// The communication points of a simulation: from the options, where they are silent from the FMU's
/// default experiment.
///
/// @throws program_support::InputError naming the value that cannot be used.
program_support::StepGrid experimentGrid(const Options& options, const DefaultExperiment& defaults);

} // namespace fmu_run
