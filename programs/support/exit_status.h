#pragma once

#include <functional>
#include <string>

namespace program_support {

/// Exit statuses of the programs beside 0, after success.
constexpr int failedStatus = 1;        ///< The FMU or the simulation failed.
constexpr int inputErrorStatus = 2;    ///< After an InputError.
constexpr int interruptedStatus = 130; ///< Ended early, as shells report it for Ctrl-C.

/// What --help says about them, `what` being what can fail, such as "the FMU".
std::string exitStatusHelp(const std::string& what);

/// Calls `body`, which is what a program does, and returns its exit status. What it throws becomes
/// one line on standard error, "<name>: <text>", and the status that belongs to it; so does
/// standard output that cannot be written. To be called first: it holds the standard streams, and
/// lets nothing but terminalText() through std::cout and std::cerr.
int exitStatusOf(const std::string& name, const std::function<int()>& body);

} // namespace program_support
