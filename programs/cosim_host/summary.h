#pragma once

#include "reference_host/cosim_host/launch_options.h"
#include "reference_host/cosim_host/recorder.h"
#include "reference_host/cosim_host/run_driver.h"
#include "reference_host/cosim_host/solver_files.h"

namespace cosim_host {

/// Prints on standard output how a run went, what its signals did, and where its files are:
/// `files` are the solver's.
void printSummary(const LaunchOptions& options, const RunReport& report, const Recorder& recorder,
                  const SolverFiles& files);

} // namespace cosim_host
