#include "platform/command.h"

#include <cstdlib>

namespace platform {

namespace {

/// Quotes a word for the shell unless every character of it stands for itself.
std::string shellWord(const std::string& word) {
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                       "0123456789/._-+=:,@%";
    if (!word.empty() && word.find_first_not_of(plain) == std::string::npos) {
        return word;
    }
    std::string quoted = "'";
    for (const char c : word) {
        if (c == '\'') {
            quoted += "'\\''";
        } else {
            quoted += c;
        }
    }
    return quoted + "'";
}

} // namespace

std::string_view scriptSuffix() {
    return ".sh";
}

void runScript(const std::string& program, const std::string& argument) {
    const int status = std::system((shellWord(program) + ' ' + argument).c_str());
    static_cast<void>(status); // The script's outcome is its own affair.
}

} // namespace platform
