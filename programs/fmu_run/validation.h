#pragma once

#include "fmu_run/options.h"

namespace fmu_run {

/// Checks an FMU the way the runtime would meet it, up to its first step, and prints each finding
/// with its remedy on standard output as soon as it is found: a model that ends the process does
/// not take the earlier ones with it. Returns the number of errors, at most 100, as exit status.
int validate(const Options& options);

} // namespace fmu_run
