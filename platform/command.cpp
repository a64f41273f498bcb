#include "platform/command.h"

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

/// `program`, in the current directory when its path has none of `separators`.
std::string located(const std::string& program, const char* separators, const char* here) {
    return program.find_first_of(separators) == std::string::npos ? here + program : program;
}

} // namespace

std::string windowsScriptCommand(const std::string& program, const std::string& argument) {
    const std::string path = located(program, "/\\:", ".\\");
    // What takes a word apart or is an operator; after a "/" the interpreter reads a switch.
    if (path.find_first_of(" &()[]{}^=;!'+,`~%/") == std::string::npos) {
        return path + ' ' + argument;
    }
    // The interpreter strips the outermost pair of quotes when a command begins with one.
    return "\"\"" + path + "\" " + argument + "\"";
}

std::string posixScriptCommand(const std::string& program, const std::string& argument) {
    return shellWord(located(program, "/", "./")) + ' ' + argument;
}

} // namespace platform
