#pragma once

#include "support/run_program.h"

#include <filesystem>
#include <optional>
#include <string>

namespace test_support {

/// Files that the program's standard streams are connected to. Files, not pipes: nothing needs to
/// be read while the program runs, and none of its output is lost when it is killed.
struct StandardStreams {
    std::filesystem::path input;
    std::filesystem::path output;
    std::filesystem::path error;
};

/// Runs the program and fills everything of the result but the texts.
ProgramResult runWithStreams(const std::filesystem::path& program,
                             const std::vector<std::string>& arguments, const RunOptions& options,
                             const StandardStreams& streams);

/// Sets a variable of this process's environment, or removes it.
void setEnvironmentVariable(const std::string& name, const std::optional<std::string>& value);

} // namespace test_support
