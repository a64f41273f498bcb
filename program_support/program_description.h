#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace program_support {

/// The program's manual page (section 1, in the man macros of troff), from what --help shows.
std::string manPage(const CLI::App& app);

/// A script for bash that completes the program's options, and files everywhere else.
std::string bashCompletion(const CLI::App& app);

} // namespace program_support
