#pragma once

#include "programs/cosim_host/run_driver.h"
#include "programs/cosim_host/solver_files.h"

#include <vector>

namespace cosim_host {

/// Says on standard error how many warnings and errors the solvers' logs have, with the first of
/// each, and which log of a completed run breaks off, as on a full disk.
///
/// Returns the outcome: that of `report`, but failed for a log that breaks off, and with `strict`
/// for any warning or error.
RunOutcome checkLogs(const RunReport& report, const std::vector<SolverFiles*>& files, bool strict);

} // namespace cosim_host
