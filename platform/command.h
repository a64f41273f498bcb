#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Ending of the clean-up script: ".bat" or ".sh".
std::string_view scriptSuffix();

/// The commands by which the platforms' interpreters run `program` with `argument`: pure rules
/// about text, compiled and tested everywhere. The program's path is quoted where the interpreter
/// would otherwise take it apart. A program without a directory is the one in the current
/// directory, never one that a search path leads to.
std::string windowsScriptCommand(const std::string& program, const std::string& argument);
std::string posixScriptCommand(const std::string& program, const std::string& argument);

/// Runs `program` with `argument` through the command interpreter and waits for it.
void runScript(const std::string& program, const std::string& argument);

} // namespace platform
