#pragma once

#include "platform/stream_redirection.h"

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace program_support {

/// Keeps what an FMU, a solver, their libraries and the programs they start print off the terminal
/// while it lives: both standard streams go to files. The program itself prints on error().
class KeptOutput {
  public:
    /// Appends to files in `directory`; lets everything through when that is empty.
    explicit KeptOutput(const std::filesystem::path& directory);

    /// Standard error as it was before.
    [[nodiscard]] std::FILE* error() const;

  private:
    std::optional<platform::StreamRedirection> output_;
    std::optional<platform::StreamRedirection> error_;
};

/// What was kept, as far as it matters to a user.
struct KeptMessages {
    std::vector<std::string> loadErrors; ///< Why the FMU could not be loaded.
    std::string lastStatus;              ///< Of a call that failed: "fmi2DoStep returned Discard".
    bool isRefused = false;              ///< The FMU made no instance.
    /// Of the FMU before it has a log, of the solver about its command line, and about files that
    /// could not be written: whole lines.
    std::vector<std::string> complaints;

    /// What failed, to be appended to a message: "; fmi2DoStep returned Discard"; empty when
    /// nothing tells.
    [[nodiscard]] std::string reason() const;
};

/// Takes what was kept in a directory out of its files. The streams may still go there.
KeptMessages takeKeptMessages(const std::filesystem::path& directory);

} // namespace program_support
