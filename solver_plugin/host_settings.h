#pragma once

#include <string>

class Solver;

/// The host's settings, by the indices that host and plug-in agree on.
///
/// All of them throw what the host throws, and std::logic_error when an object of the host is
/// missing.
namespace solver_plugin {

/// Directory in which the run works.
std::string workingDirectory(const Solver& solver);

/// A file of the host's, beside which the clean-up script's folder is.
std::string modelFilePath(const Solver& solver);

/// True when the host runs this solver coupled to others.
bool isCoupled(const Solver& solver);

/// True when the host wants the operations of a step to do nothing.
bool isStepSkipped(const Solver& solver);

/// Reports a failure to the host.
void writeStatus(const Solver& solver, int code);

/// writeStatus() for set-up, which takes the solver's own way to the settings of the run: a host may
/// set its solvers up before its model manager has a solution.
void writeSetUpStatus(const Solver& solver, int code);

} // namespace solver_plugin
