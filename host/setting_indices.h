#pragma once

// Indices of the settings that host and solver agree on. Each store counts on its own.

namespace reference_host::solver_parameter {
inline constexpr int workingDirectory = 1;
inline constexpr int commandLine = 3;
} // namespace reference_host::solver_parameter

namespace reference_host::solver_option {
inline constexpr int coupled = 1;
} // namespace reference_host::solver_option

namespace reference_host::solution_parameter {
inline constexpr int modelFilePath = 2;
inline constexpr int status = 11;
inline constexpr int stepSkip = 12;
} // namespace reference_host::solution_parameter

namespace reference_host::solution_option {
inline constexpr int stepSkip = 2;
} // namespace reference_host::solution_option
