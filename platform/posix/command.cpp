#include "platform/command.h"

#include <cstdlib>

namespace platform {

std::string_view scriptSuffix() {
    return ".sh";
}

void runScript(const std::string& program, const std::string& argument) {
    const int status = std::system(posixScriptCommand(program, argument).c_str());
    static_cast<void>(status); // The script's outcome is its own affair.
}

} // namespace platform
