#pragma once

#include "support/files.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace test_support {

struct RunOptions {
    /// Variables that are added to this process's own.
    std::vector<std::pair<std::string, std::string>> environment{};
    /// Empty: that of this process.
    std::filesystem::path workingDirectory{};
    std::string standardInput{};
    /// The program is killed after it.
    std::chrono::milliseconds timeout = std::chrono::minutes(2);
    /// Asked again and again while the program runs; when it first answers true, the program gets
    /// what Ctrl-C sends. POSIX only: see canInterrupt.
    std::function<bool()> interruptWhen{};
    /// It gets SIGTERM instead.
    bool interruptsByTermination = false;
};

struct ProgramResult {
    int exitStatus = -1;  ///< On POSIX 128 + signal after a crash.
    bool crashed = false; ///< Ended by a signal, on Windows by an exception.
    bool timedOut = false;
    std::string output; ///< Standard output.
    std::string error;  ///< Standard error.
};

/// Runs a program to its end. `arguments` are narrow texts; narrow() makes one from a path.
ProgramResult runProgram(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments, const RunOptions& options = {});

/// Path of a program of this build, such as "fmu_run".
std::filesystem::path programPath(std::string_view name);

/// True where RunOptions::interruptWhen works.
extern const bool canInterrupt;

} // namespace test_support
