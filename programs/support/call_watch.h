#pragma once

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace program_support {

/// Tells of calls into an FMU or a solver that take the process down or never return: exit(),
/// abort(), a crash, and with a time limit a call that is stuck. The program then says on standard
/// error what happened in which call at which simulated time, removes its temporary directory, and
/// ends with failedStatus.
///
/// One in a process, made before the first such call. Each call costs a few stores.
class CallWatch {
  public:
    /// How messages begin, such as "fmu_run: 'tyre.fmu'"; and seconds of the clock from now on after
    /// which a call has one second left to return.
    CallWatch(std::string subject, const std::optional<double>& timeout);
    ~CallWatch();
    CallWatch(const CallWatch&) = delete;
    CallWatch& operator=(const CallWatch&) = delete;
    CallWatch(CallWatch&&) = delete;
    CallWatch& operator=(CallWatch&&) = delete;

    /// A directory to remove when a call does not let the program do it.
    void setTemporaryDirectory(const std::filesystem::path& directory);

    /// The log that the calls write to; its last line is quoted.
    void setLog(const std::string& log);

  private:
    void watchTime(std::chrono::steady_clock::time_point deadline);

    std::mutex mutex_;
    std::condition_variable ending_;
    bool isEnding_ = false;
    std::thread watchdog_;
};

/// A call into an FMU or a solver, active while it lives. Calls do not contain each other.
class ForeignCall {
  public:
    /// `name` names FMI's functions or the solver's operation and is static; `time` is the simulated
    /// time in seconds that it is about.
    ForeignCall(const char* name, double time) noexcept;
    ~ForeignCall();
    ForeignCall(const ForeignCall&) = delete;
    ForeignCall& operator=(const ForeignCall&) = delete;
    ForeignCall(ForeignCall&&) = delete;
    ForeignCall& operator=(ForeignCall&&) = delete;
};

} // namespace program_support
