#pragma once

#include "programs/fmu_run/options.h"

namespace fmu_run {

/// Simulates the FMU with results and log in the files of the options. Returns the exit status: 0,
/// or program_support::interruptedStatus after Ctrl-C or the time limit.
///
/// @throws program_support::InputError for what the user gave.
/// @throws RunFailure when the FMU fails; the rows written until then stay.
int simulate(const Options& options);

} // namespace fmu_run
