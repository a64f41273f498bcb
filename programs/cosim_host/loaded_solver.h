#pragma once

#include "host/solver.h"
#include "platform/shared_library.h"

#include <filesystem>
#include <memory>
#include <string>

namespace cosim_host {

/// A solver out of a library that is loaded at run time and stays loaded as long as the solver.
class LoadedSolver {
  public:
    /// Loads the library and asks its factory createSolver for the solver. What they print, also
    /// when they are ended, is kept in the directory `keptIn`; let through when that is empty.
    ///
    /// @throws program_support::InputError when the library cannot be loaded, has no such factory,
    ///         or makes no solver.
    LoadedSolver(const std::string& library, std::filesystem::path keptIn);
    ~LoadedSolver();
    LoadedSolver(const LoadedSolver&) = delete;
    LoadedSolver& operator=(const LoadedSolver&) = delete;
    LoadedSolver(LoadedSolver&&) = delete;
    LoadedSolver& operator=(LoadedSolver&&) = delete;

    Solver& operator*() const { return *solver_; }

  private:
    void make(const std::string& library);

    std::filesystem::path keptIn_;
    platform::SharedLibrary library_;
    std::unique_ptr<Solver> solver_;
};

/// The library that belongs to this program: fmi_solver beside it or in the lib folder next to its
/// own.
///
/// @throws program_support::InputError when there is none.
std::string defaultSolverLibrary();

} // namespace cosim_host
