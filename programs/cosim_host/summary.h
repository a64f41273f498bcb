#pragma once

#include "programs/cosim_host/launch_options.h"
#include "programs/cosim_host/recorder.h"
#include "programs/cosim_host/run_driver.h"
#include "programs/cosim_host/solver_files.h"

#include <vector>

namespace cosim_host {

/// Prints on standard output how a run went, what its signals did, and where its files are:
/// `files` are the solvers'.
void printSummary(const LaunchOptions& options, const RunReport& report, const Recorder& recorder,
                  const std::vector<SolverFiles*>& files);

} // namespace cosim_host
