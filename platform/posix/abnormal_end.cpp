#include "platform/abnormal_end.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr int failedStatus = 1;

AbnormalEndHandler handlerOfProcess = nullptr;
int keptError = STDERR_FILENO;
volatile std::sig_atomic_t isEnding = 0;

struct Fault {
    int signal;
    std::string_view text;
};

constexpr std::array faults{
    Fault{SIGSEGV, "crashed (segmentation fault)"}, Fault{SIGBUS, "crashed (bus error)"},
    Fault{SIGFPE, "crashed (arithmetic error)"}, Fault{SIGILL, "crashed (illegal instruction)"},
    Fault{SIGABRT, "aborted"}};

/// A fault while the process is ending is the end of it.
void end(std::string_view whatHappened) {
    if (isEnding != 0) {
        endProcess(failedStatus);
    }
    isEnding = 1;
    handlerOfProcess(whatHappened);
    isEnding = 0;
}

extern "C" void onFault(int signal) {
    for (const Fault& fault : faults) {
        if (fault.signal == signal) {
            end(fault.text);
        }
    }
    endProcess(failedStatus);
}

extern "C" void onExit() {
    end("called exit");
}

extern "C" void onTimeIsOver(int /*signal*/) {
    endProcess(failedStatus);
}

/// A stack of its own for the handlers: the fault may be that the stack is used up.
void useOwnStack() {
    static std::array<char, 65536> memory;
    stack_t stack{};
    stack.ss_sp = memory.data();
    stack.ss_size = memory.size();
    ::sigaltstack(&stack, nullptr);
}

} // namespace

void handleAbnormalEnds(AbnormalEndHandler handler) {
    handlerOfProcess = handler;
    const int copy = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    keptError = copy >= 0 ? copy : STDERR_FILENO;
    useOwnStack();

    struct sigaction action {};

    action.sa_handler = onFault;
    action.sa_flags = SA_ONSTACK | SA_NODEFER;
    for (const Fault& fault : faults) {
        ::sigaction(fault.signal, &action, nullptr);
    }
    std::signal(SIGXFSZ, SIG_IGN); // A limit on the size of files fails the write, as a full disk.
    std::atexit(onExit);
}

void printOnKeptError(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(keptError, text.data(), text.size());
        if (written <= 0) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void limitAbnormalEnd(unsigned seconds) {
    std::signal(SIGALRM, onTimeIsOver);
    ::alarm(seconds);
}

void endProcess(int exitStatus) {
    ::_exit(exitStatus);
}

} // namespace platform
