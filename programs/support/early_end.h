#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace program_support {

/// What ends a run between two of its steps, with its files complete: a signal, or a limit of time.
///
/// While it lives, Ctrl-C (SIGINT) and SIGTERM do not end the process but are noted here. A second
/// one of either ends the process at once: a model that hangs in a step would never let the run look. One
/// at a time.
class EarlyEnd {
  public:
    /// `timeout` is in seconds of the clock from now on; nothing for no limit.
    explicit EarlyEnd(const std::optional<double>& timeout);
    ~EarlyEnd();
    EarlyEnd(const EarlyEnd&) = delete;
    EarlyEnd& operator=(const EarlyEnd&) = delete;
    EarlyEnd(EarlyEnd&&) = delete;
    EarlyEnd& operator=(EarlyEnd&&) = delete;

    /// True when the run is to end.
    [[nodiscard]] bool isDue() const;

    /// Why it is, for people: "interrupted" or "stopped after --timeout 5 s"; empty while it is not.
    [[nodiscard]] std::string reason() const;

  private:
    using Clock = std::chrono::steady_clock;
    using Handler = void (*)(int);

    [[nodiscard]] bool timeIsOver() const;

    std::optional<double> timeout_;
    Clock::time_point begin_ = Clock::now();
    Handler previousInterrupt_;
    Handler previousTerminate_;
};

} // namespace program_support
