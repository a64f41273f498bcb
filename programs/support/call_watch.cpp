#include "programs/support/call_watch.h"

#include "platform/abnormal_end.h"
#include "platform/temporary_directory.h"
#include "programs/support/exit_status.h"
#include "programs/support/run_log.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <utility>

namespace program_support {

using Clock = std::chrono::steady_clock;

namespace {

constexpr auto timeToReturn = std::chrono::seconds(1);
constexpr auto lookInterval = std::chrono::milliseconds(50);
constexpr unsigned secondsToTidyUp = 5;

/// What the handlers of the process, which get no argument of ours, know about it.
struct Watched {
    std::string subject;
    std::filesystem::path temporaryDirectory;
    std::string log;
    std::atomic<const char*> call{nullptr};
    std::atomic<double> time{0.0};
    std::atomic<std::uint64_t> number{0};
};

Watched watched;

void printNumber(double value) {
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, 9);
    platform::printOnKeptError({text.data(), static_cast<std::size_t>(end.ptr - text.data())});
}

/// First what needs no memory, since a crash may have taken it.
void report(std::string_view whatHappened) {
    for (const std::string_view part :
         {std::string_view(watched.subject), std::string_view(" "), whatHappened,
          std::string_view(" in "), std::string_view(watched.call.load())}) {
        platform::printOnKeptError(part);
    }
    platform::printOnKeptError(" at t = ");
    printNumber(watched.time);
    platform::printOnKeptError(" s; ask the FMU's maker for a corrected one\n");
}

void quoteLog() {
    const auto line = lastLine(watched.log);
    if (!line.empty()) {
        platform::printOnKeptError("The last line of its log '" + watched.log + "': " + line +
                                   "\n");
    }
}

[[noreturn]] void endAfterFailedCall(std::string_view whatHappened) {
    platform::limitAbnormalEnd(secondsToTidyUp);
    report(whatHappened);
    quoteLog();
    if (!watched.temporaryDirectory.empty()) {
        platform::removeDirectory(watched.temporaryDirectory);
    }
    platform::endProcess(failedStatus);
}

void onAbnormalEnd(std::string_view whatHappened) {
    if (watched.call != nullptr) {
        endAfterFailedCall(whatHappened);
    }
}

} // namespace

CallWatch::CallWatch(std::string subject, const std::optional<double>& timeout) {
    watched.subject = std::move(subject);
    platform::handleAbnormalEnds(onAbnormalEnd);
    if (timeout) {
        const auto limit = std::chrono::duration<double>(std::min(*timeout, 1e8));
        const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(limit);
        watchdog_ = std::thread([this, deadline] { watchTime(deadline); });
    }
}

CallWatch::~CallWatch() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    ending_.notify_one();
    if (watchdog_.joinable()) {
        watchdog_.join();
    }
}

void CallWatch::setTemporaryDirectory(const std::filesystem::path& directory) {
    watched.temporaryDirectory = directory;
}

void CallWatch::setLog(const std::string& log) {
    watched.log = log;
}

/// After the deadline every call has a second of its own: the FMU may still be terminated in order.
void CallWatch::watchTime(Clock::time_point deadline) {
    std::unique_lock lock(mutex_);
    ending_.wait_until(lock, deadline, [this] { return isEnding_; });
    std::uint64_t number = watched.number;
    auto begin = Clock::now();
    while (!ending_.wait_for(lock, lookInterval, [this] { return isEnding_; })) {
        const std::uint64_t now = watched.number;
        if (std::exchange(number, now) != now || watched.call == nullptr) {
            begin = Clock::now();
        } else if (Clock::now() - begin >= timeToReturn) {
            endAfterFailedCall("did not return within --timeout");
        }
    }
}

ForeignCall::ForeignCall(const char* name, double time) noexcept {
    watched.time.store(time, std::memory_order_relaxed);
    watched.number.store(watched.number.load(std::memory_order_relaxed) + 1,
                         std::memory_order_relaxed);
    watched.call.store(name, std::memory_order_relaxed);
}

ForeignCall::~ForeignCall() {
    watched.call.store(nullptr, std::memory_order_relaxed);
}

} // namespace program_support
