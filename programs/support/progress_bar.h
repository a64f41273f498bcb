#pragma once

#include <chrono>
#include <cstdio>
#include <string>

namespace program_support {

/// One line on a terminal with how far a simulation is: simulated time and real-time factor
/// (seconds simulated in a second of the clock). Redrawn about ten times a second, so it costs a
/// step nothing.
class ProgressBar {
  public:
    /// Draws on `stream`, which the caller keeps open, unless `enabled` is false or the stream is
    /// no terminal. The times are in seconds.
    ProgressBar(std::FILE* stream, double startTime, double stopTime, bool enabled);
    /// As finish().
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ProgressBar(ProgressBar&&) = delete;
    ProgressBar& operator=(ProgressBar&&) = delete;

    /// The simulation has reached `time`.
    void update(double time);

    /// Draws the last state and ends the line; further calls do nothing.
    void finish();

  private:
    using Clock = std::chrono::steady_clock;

    void draw();

    std::FILE* stream_;
    double startTime_;
    double stopTime_;
    double time_;
    bool enabled_;
    Clock::time_point begin_ = Clock::now();
    Clock::time_point nextDraw_ = begin_;
};

/// The text that ProgressBar draws, `elapsed` being seconds of the clock.
std::string progressLine(double startTime, double stopTime, double time, double elapsed);

} // namespace program_support
