#pragma once

#include <filesystem>
#include <string>

namespace cosim_host {

/// Where the solver puts what it writes about a run.
struct SolverFiles {
    std::filesystem::path log;
    std::filesystem::path results;
};

/// The files of a run of `fmuPath` in `workingDirectory`, which the environment can override.
SolverFiles solverFiles(const std::string& workingDirectory, const std::string& fmuPath);

} // namespace cosim_host
