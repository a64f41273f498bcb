#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

namespace program_support {

/// Prepares the command line of a program: --help, --version, and --man-page and --completion,
/// which the build uses and --help does not show. The texts of all four come from the options that
/// the caller adds to `app` afterwards. `description` is the sentence that --help and the manual
/// page begin with.
void beginCommandLine(CLI::App& app, const std::string& name, const std::string& description);

/// Reads the program's arguments into what the options of `app` are bound to.
///
/// Returns nothing when the program is to go on; its exit status when a text was asked for and has
/// been printed.
///
/// @throws InputError for arguments that cannot be used, with a hint to --help.
std::optional<int> readCommandLine(CLI::App& app, int argc, const char* const* argv);

/// Adds an option that takes one text; `type` is what --help calls it, such as "FILE".
CLI::Option* addTextOption(CLI::App& app, const std::string& name, std::string& value,
                           const std::string& type, const std::string& description);

/// Adds an option that takes one finite number of the given unit ("SECONDS"), read strictly.
CLI::Option* addNumberOption(CLI::App& app, const std::string& name, std::optional<double>& value,
                             const std::string& unit, const std::string& description);

/// Adds --timeout, the limit of EarlyEnd.
void addTimeoutOption(CLI::App& app, std::optional<double>& timeout);

/// @throws InputError when a value is given that is not above 0.
void requirePositive(const std::optional<double>& value, const std::string& option);

} // namespace program_support
