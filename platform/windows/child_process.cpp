#include "platform/child_process.h"

#include "platform/files.h"
#include "platform/windows/command_line.h"

#include <windows.h>

namespace platform {

const ProgramPlaces programPlaces{';', ".exe"};

namespace {

/// `argument` so that the C runtime of the program reads it back as it is: backslashes are doubled
/// where a quote follows them.
std::string quoted(const std::string& argument) {
    std::string result = "\"";
    std::size_t backslashes = 0;
    for (const char character : argument) {
        if (character == '"') {
            result.append(backslashes + 1, '\\');
        }
        backslashes = character == '\\' ? backslashes + 1 : 0;
        result += character;
    }
    return result.append(backslashes, '\\') + '"';
}

} // namespace

std::string joinedCommandLine(const std::vector<std::string>& arguments) {
    std::string line;
    for (const auto& argument : arguments) {
        line.append(line.empty() ? "" : " ").append(quoted(argument));
    }
    return line;
}

std::optional<int> runProgram(const std::vector<std::string>& arguments) {
    std::wstring wideLine = nativePath(joinedCommandLine(arguments)).native();
    STARTUPINFOW info{};
    info.cb = sizeof info;
    PROCESS_INFORMATION process{};
    // Named apart from the command line, the program is not searched for.
    const std::wstring program = nativePath(arguments.front()).native();
    if (!CreateProcessW(program.c_str(), wideLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                        nullptr, &info, &process)) {
        return std::nullopt;
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(status);
}

} // namespace platform
