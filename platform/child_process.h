#pragma once

#include <optional>
#include <string>
#include <vector>

namespace platform {

/// Runs a program, looked for as the system does when it is named without a directory, and waits
/// for its end. No command interpreter sees the arguments.
///
/// `arguments` begin with the program. Its standard streams are this process's. Returns its exit
/// status, which is not 0 after a crash either; nothing when it could not be started.
std::optional<int> runProgram(const std::vector<std::string>& arguments);

} // namespace platform
