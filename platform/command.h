#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Ending of the clean-up script: ".bat" or ".sh".
std::string_view scriptSuffix();

/// Runs `program` with `argument` through the command interpreter and waits for it. The program's
/// path is quoted where the interpreter would otherwise take it apart.
void runScript(const std::string& program, const std::string& argument);

} // namespace platform
