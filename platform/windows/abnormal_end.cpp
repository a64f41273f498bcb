#include "platform/abnormal_end.h"

#include <atomic>
#include <bit>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <windows.h>

namespace platform {

namespace {

constexpr int failedStatus = 1;

AbnormalEndHandler handlerOfProcess = nullptr;
HANDLE keptError = nullptr;
std::atomic<bool> isEnding{false};

/// A fault while the process is ending is the end of it.
void end(std::string_view whatHappened) {
    if (isEnding.exchange(true)) {
        endProcess(failedStatus);
    }
    handlerOfProcess(whatHappened);
    isEnding = false;
}

std::string_view textOf(DWORD exception) {
    switch (exception) {
    case EXCEPTION_ACCESS_VIOLATION:
        return "crashed (access violation)";
    case EXCEPTION_STACK_OVERFLOW:
        return "crashed (stack overflow)";
    case EXCEPTION_ILLEGAL_INSTRUCTION:
        return "crashed (illegal instruction)";
    case EXCEPTION_INT_DIVIDE_BY_ZERO:
        return "crashed (arithmetic error)";
    default:
        return "crashed";
    }
}

LONG WINAPI onException(EXCEPTION_POINTERS* exception) {
    end(textOf(exception->ExceptionRecord->ExceptionCode));
    endProcess(failedStatus);
}

extern "C" void onAbort(int /*signal*/) {
    end("aborted");
    endProcess(failedStatus);
}

extern "C" void onExit() {
    end("called exit");
}

DWORD WINAPI endAfter(void* milliseconds) {
    Sleep(static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(milliseconds)));
    endProcess(failedStatus);
}

} // namespace

void handleAbnormalEnds(AbnormalEndHandler handler) {
    handlerOfProcess = handler;
    const HANDLE process = GetCurrentProcess();
    if (DuplicateHandle(process, GetStdHandle(STD_ERROR_HANDLE), process, &keptError, 0, FALSE,
                        DUPLICATE_SAME_ACCESS) == 0) {
        keptError = nullptr;
    }
    ULONG stackForHandler = 65536;
    SetThreadStackGuarantee(&stackForHandler);
    SetUnhandledExceptionFilter(onException);
    std::signal(SIGABRT, onAbort);
    std::atexit(onExit);
}

void printOnKeptError(std::string_view text) {
    DWORD written = 0;
    if (keptError != nullptr) {
        WriteFile(keptError, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    }
}

void limitAbnormalEnd(unsigned seconds) {
    const HANDLE thread = CreateThread(
        nullptr, 0, endAfter, std::bit_cast<void*>(std::uintptr_t{seconds} * 1000), 0, nullptr);
    if (thread != nullptr) {
        CloseHandle(thread);
    }
}

void endProcess(int exitStatus) {
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitStatus));
    std::_Exit(exitStatus); // Not reached, but the compiler cannot know.
}

} // namespace platform
