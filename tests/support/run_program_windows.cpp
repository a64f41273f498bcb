#include "platform/windows/command_line.h"
#include "support/run_program_platform.h"

#include <cstdlib>
#include <memory>
#include <optional>

#define WIN32_LEAN_AND_MEAN
#include <chrono>
#include <utility>
#include <windows.h>

namespace test_support {

const bool canInterrupt = false;

namespace {

/// An environment variable of this process, changed while the object lives: a child inherits it.
class ChangedVariable {
  public:
    ChangedVariable(std::string name, const std::string& value) : name_(std::move(name)) {
        std::string old(32768, '\0');
        const DWORD length =
            GetEnvironmentVariableA(name_.c_str(), old.data(), static_cast<DWORD>(old.size()));
        if (length > 0) {
            previous_ = old.substr(0, length);
        }
        SetEnvironmentVariableA(name_.c_str(), value.c_str());
    }

    ~ChangedVariable() {
        SetEnvironmentVariableA(name_.c_str(), previous_ ? previous_->c_str() : nullptr);
    }

    ChangedVariable(const ChangedVariable&) = delete;
    ChangedVariable& operator=(const ChangedVariable&) = delete;

  private:
    std::string name_;
    std::optional<std::string> previous_;
};

std::string commandLine(const std::filesystem::path& program,
                        const std::vector<std::string>& arguments) {
    std::vector<std::string> texts{narrow(program)};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    return platform::joinedCommandLine(texts);
}

HANDLE openInheritable(const std::filesystem::path& file, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES attributes{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return CreateFileW(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &attributes,
                       disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

STARTUPINFOA startupInfo(const StandardStreams& streams) {
    STARTUPINFOA info{};
    info.cb = sizeof info;
    info.dwFlags = STARTF_USESTDHANDLES;
    info.hStdInput = openInheritable(streams.input, GENERIC_READ, OPEN_EXISTING);
    info.hStdOutput = openInheritable(streams.output, GENERIC_WRITE, CREATE_ALWAYS);
    info.hStdError = openInheritable(streams.error, GENERIC_WRITE, CREATE_ALWAYS);
    return info;
}

void closeStreams(const STARTUPINFOA& info) {
    CloseHandle(info.hStdInput);
    CloseHandle(info.hStdOutput);
    CloseHandle(info.hStdError);
}

ProgramResult waitFor(HANDLE process, std::chrono::milliseconds timeout) {
    ProgramResult result;
    if (WaitForSingleObject(process, static_cast<DWORD>(timeout.count())) == WAIT_TIMEOUT) {
        result.timedOut = true;
        TerminateProcess(process, 1);
        WaitForSingleObject(process, INFINITE);
    }
    DWORD status = 0;
    GetExitCodeProcess(process, &status);
    result.exitStatus = static_cast<int>(status);
    result.crashed = status >= 0xC0000000U;
    return result;
}

} // namespace

ProgramResult runWithStreams(const std::filesystem::path& program,
                             const std::vector<std::string>& arguments, const RunOptions& options,
                             const StandardStreams& streams) {
    std::vector<std::unique_ptr<ChangedVariable>> variables;
    for (const auto& [name, value] : options.environment) {
        variables.push_back(std::make_unique<ChangedVariable>(name, value));
    }
    std::string line = commandLine(std::filesystem::absolute(program), arguments);
    const std::string directory = narrow(options.workingDirectory);
    STARTUPINFOA info = startupInfo(streams);
    PROCESS_INFORMATION process{};
    const BOOL started =
        CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                       directory.empty() ? nullptr : directory.c_str(), &info, &process);
    closeStreams(info);
    if (!started) {
        return {};
    }
    ProgramResult result = waitFor(process.hProcess, options.timeout);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return result;
}

// Through the C runtime, whose copy of the environment getenv() reads. An empty value removes
// there.
void setEnvironmentVariable(const std::string& name, const std::optional<std::string>& value) {
    _putenv_s(name.c_str(), value.value_or("").c_str());
}

} // namespace test_support
