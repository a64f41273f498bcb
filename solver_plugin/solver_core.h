#pragma once

#include "fmi_tools.h"
#include "run_config/fmi_solver_options.h"

#include <memory>
#include <string>

namespace solver_plugin {

/// The files that a run writes, by the names that it has got.
struct RunFiles {
    std::string log;
    std::string results;
    bool isMoved = false; ///< Other runs have the files that the user expects.
};

/// What a solver has of its own: its options and its FMU.
struct SolverCore {
    /// The parsed command line; never null.
    std::unique_ptr<run_config::FmiSolverOptions> settings =
        std::make_unique<run_config::FmiSolverOptions>();

    /// The loaded FMU; null before set-up, when loading failed, and after the end of the run. Not
    /// owned: only the end of the run releases it, so that a host which deletes its solver earlier
    /// leaves the FMU, whose library may still be in use, where it is.
    FmiToolsInstance* runtime = nullptr;

    /// Of the last set-up.
    RunFiles files;
};

} // namespace solver_plugin
