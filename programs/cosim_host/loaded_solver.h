#pragma once

#include "host/solver.h"
#include "platform/shared_library.h"

#include <memory>
#include <string>

namespace cosim_host {

/// A solver out of a library that is loaded at run time and stays loaded as long as the solver.
class LoadedSolver {
  public:
    /// Loads the library and asks its factory createSolver for the solver.
    ///
    /// @throws program_support::InputError when the library cannot be loaded, has no such factory,
    ///         or makes no solver.
    explicit LoadedSolver(const std::string& library);

    Solver& operator*() const { return *solver_; }

  private:
    platform::SharedLibrary library_;
    std::unique_ptr<Solver> solver_;
};

/// The library that belongs to this program: fmi_solver beside it or in the lib folder next to its
/// own.
///
/// @throws program_support::InputError when there is none.
std::string defaultSolverLibrary();

} // namespace cosim_host
