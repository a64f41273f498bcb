#pragma once

#include "programs/cosim_host/launch_options.h"
#include "programs/cosim_host/loaded_solver.h"
#include "programs/cosim_host/solver_files.h"
#include "programs/cosim_host/tyre_exchange.h"
#include "programs/support/distinct_files.h"
#include "reference_host/simulation.h"

#include <filesystem>
#include <string>
#include <vector>

namespace cosim_host {

/// A solver and what the host holds for it.
class Partner {
  public:
    /// Loads the solver of `options` for a command line and a working directory of its own. What it
    /// prints is kept in the directory `keptIn`; let through when that is empty.
    ///
    /// @throws program_support::InputError when it cannot be loaded.
    Partner(const LaunchOptions& options, const std::string& commandLine,
            const std::string& workingDirectory, const std::filesystem::path& keptIn);

    /// @throws program_support::InputError unless the command line begins with the path of an
    ///         archive. Only for the solver that belongs to this program.
    void requireFmu() const;

    [[nodiscard]] Solver& solver() const { return *solver_; }

    [[nodiscard]] reference_host::Simulation& simulation() { return simulation_; }

    [[nodiscard]] const SolverFiles& files() const { return files_; }

    [[nodiscard]] SolverFiles& files() { return files_; }

    /// What the solver reads: the FMU and the parameters files of its command line.
    [[nodiscard]] std::vector<program_support::RunFile> inputs() const;

    /// What the solver writes.
    [[nodiscard]] std::vector<program_support::RunFile> outputs() const;

    /// Whether the solver can use its parameters files. It goes on without one that it cannot use;
    /// that is said on standard error.
    [[nodiscard]] bool checkParametersFiles() const;

    /// Whether the solver takes input vectors apart itself.
    [[nodiscard]] bool takesInputArrays() const;

    /// Adds what host and solver of a tyre exchange; for one tyre.
    TyreExchange addTyre();

  private:
    [[nodiscard]] bool wasTold(const char* option) const;
    [[nodiscard]] std::vector<std::string> parametersFiles() const;

    std::filesystem::path keptIn_;
    std::vector<std::string> arguments_; ///< As the solver will see them.
    SolverFiles files_;
    reference_host::Simulation simulation_;
    LoadedSolver solver_;
};

} // namespace cosim_host
