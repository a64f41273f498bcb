#include "platform/command.h"

#include <cstdlib>

namespace platform {

namespace {

/// True when the command interpreter would take the word apart or read part of it as an operator.
bool needsQuotes(const std::string& word) {
    return word.find_first_of(" &()[]{}^=;!'+,`~%") != std::string::npos;
}

} // namespace

std::string_view scriptSuffix() {
    return ".bat";
}

void runScript(const std::string& program, const std::string& argument) {
    // The interpreter strips the outermost pair of quotes when a command begins with one.
    const std::string command = needsQuotes(program) ? "\"\"" + program + "\" " + argument + "\""
                                                     : program + ' ' + argument;
    const int status = std::system(command.c_str());
    static_cast<void>(status); // The script's outcome is its own affair.
}

} // namespace platform
