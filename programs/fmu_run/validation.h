#pragma once

#include "programs/fmu_run/options.h"

namespace fmu_run {

/// Checks an FMU the way the runtime would meet it, up to its first step, and prints each finding
/// with its remedy on standard output as soon as it is found: a model that ends the process does
/// not take the earlier ones with it. Returns the exit status:
/// program_support::failedStatus when there are errors.
int validate(const Options& options);

} // namespace fmu_run
