#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace program_support {

/// An option as the user writes it, such as "-q, --quiet" or "--log-file FILE".
std::string optionHeading(const CLI::Option& option);

/// What --help prints, no line of its texts wider than a terminal.
std::string helpText(const CLI::App& app);

/// The program's manual page (section 1, in the man macros of troff), from what --help shows.
std::string manPage(const CLI::App& app);

/// A script for bash that completes the program's options, and files everywhere else.
std::string bashCompletion(const CLI::App& app);

} // namespace program_support
