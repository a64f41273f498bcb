#include "platform/command.h"

#include "platform/files.h"

#include <windows.h>

namespace platform {

namespace {

/// The command interpreter by its system path: neither the environment nor a program of that name
/// in the current directory has a say.
std::wstring interpreterPath() {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetSystemDirectoryW(path.data(), MAX_PATH));
    return path + L"\\cmd.exe";
}

} // namespace

std::string_view scriptSuffix() {
    return ".bat";
}

void runScript(const std::string& program, const std::string& argument) {
    const std::wstring interpreter = interpreterPath();
    std::wstring line =
        L"cmd.exe /c " + nativePath(windowsScriptCommand(program, argument)).native();
    STARTUPINFOW info{};
    info.cb = sizeof info;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(interpreter.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                        nullptr, &info, &process)) {
        return; // As without a script: its outcome is its own affair.
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

} // namespace platform
