#include "support/run_program_platform.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace test_support {

const bool canInterrupt = true;

namespace {

constexpr int notStarted = 127;

void redirect(const std::filesystem::path& file, int flags, int descriptor) {
    const int opened = open(file.c_str(), flags, 0600);
    if (opened < 0 || dup2(opened, descriptor) < 0) {
        _exit(notStarted);
    }
    close(opened);
}

[[noreturn]] void becomeProgram(char* const* arguments, const RunOptions& options,
                                const StandardStreams& streams) {
    redirect(streams.input, O_RDONLY, STDIN_FILENO);
    redirect(streams.output, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
    redirect(streams.error, O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
    for (const auto& [name, value] : options.environment) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    if (!options.workingDirectory.empty() && chdir(options.workingDirectory.c_str()) != 0) {
        _exit(notStarted);
    }
    execv(arguments[0], arguments);
    _exit(notStarted);
}

/// Waits for the process, interrupting and killing it as the options say; its wait status.
int waitFor(pid_t process, const RunOptions& options, bool& timedOut) {
    const auto deadline = std::chrono::steady_clock::now() + options.timeout;
    bool interruptSent = !options.interruptWhen;
    int status = 0;
    while (waitpid(process, &status, WNOHANG) == 0) {
        if (!interruptSent && options.interruptWhen()) {
            kill(process, options.interruptsByTermination ? SIGTERM : SIGINT);
            interruptSent = true;
        }
        if (!timedOut && std::chrono::steady_clock::now() >= deadline) {
            kill(process, SIGKILL);
            timedOut = true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return status;
}

} // namespace

ProgramResult runWithStreams(const std::filesystem::path& program,
                             const std::vector<std::string>& arguments, const RunOptions& options,
                             const StandardStreams& streams) {
    std::vector<std::string> texts{std::filesystem::absolute(program).string()};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (auto& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    const pid_t process = fork();
    if (process == 0) {
        becomeProgram(pointers.data(), options, streams);
    }
    ProgramResult result;
    const int status = waitFor(process, options, result.timedOut);
    result.crashed = WIFSIGNALED(status);
    result.exitStatus = result.crashed ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    return result;
}

void setEnvironmentVariable(const std::string& name, const std::optional<std::string>& value) {
    if (value) {
        setenv(name.c_str(), value->c_str(), 1);
    } else {
        unsetenv(name.c_str());
    }
}

} // namespace test_support
