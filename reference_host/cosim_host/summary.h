#pragma once

#include "reference_host/cosim_host/launch_options.h"
#include "reference_host/cosim_host/recorder.h"
#include "reference_host/cosim_host/run_driver.h"

#include <string>

namespace cosim_host {

/// Prints on standard output how a run went, what its signals did, and where its files are.
/// `fmuPath` is the FMU that the solver's command line begins with.
void printSummary(const LaunchOptions& options, const RunReport& report, const Recorder& recorder,
                  const std::string& fmuPath);

} // namespace cosim_host
