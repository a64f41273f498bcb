#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace cosim_host {

/// Where the solver puts what it writes about a run.
struct SolverFiles {
    std::filesystem::path log;
    std::filesystem::path results;
};

/// The files of a run in `workingDirectory`, which the environment can override, by the arguments of
/// the solver's command line.
SolverFiles solverFiles(const std::string& workingDirectory,
                        const std::vector<std::string>& arguments);

/// Follows what solvers say in the host's log when they are set up: that another run has the files of
/// the names they should have, and which they have taken instead. Prints all else that they say.
class FollowedFiles {
  public:
    /// `files` are changed as long as the object lives; `onChange` is called then.
    FollowedFiles(std::vector<SolverFiles*> files, std::function<void()> onChange);
    ~FollowedFiles();
    FollowedFiles(const FollowedFiles&) = delete;
    FollowedFiles& operator=(const FollowedFiles&) = delete;
    FollowedFiles(FollowedFiles&&) = delete;
    FollowedFiles& operator=(FollowedFiles&&) = delete;
};

} // namespace cosim_host
