#pragma once

// Indices of the settings that host and solver agree on. Each store counts on its own.

namespace host::solver_parameter {
inline constexpr int workingDirectory = 1; ///< Text: directory in which the run works.
inline constexpr int commandLine = 3;      ///< Text: the solver's own command line.
} // namespace host::solver_parameter

namespace host::solver_option {
inline constexpr int coupled = 1; ///< Whether other solvers run along.
} // namespace host::solver_option

namespace host::solution_parameter {
inline constexpr int modelFilePath =
    2;                              ///< Text: file beside which the clean-up script's folder is.
inline constexpr int status = 11;   ///< Integer: code of the last failure.
inline constexpr int stepSkip = 12; ///< Integer: not 0 when a step's operations do nothing.
} // namespace host::solution_parameter

namespace host::solution_option {
inline constexpr int stepSkip = 2; ///< True when a step's operations do nothing.
} // namespace host::solution_option
