#pragma once

#include <cstdint>

namespace program_support {

/// The communication points of a run: the start time plus multiples of the step size, and at last
/// the stop time itself. Each is computed from the start, so that no rounding piles up.
class StepGrid {
  public:
    /// Times in seconds: a stop time not before the start time, and a step size above 0.
    StepGrid(double startTime, double stopTime, double stepSize);

    [[nodiscard]] double startTime() const { return startTime_; }

    [[nodiscard]] double stopTime() const { return stopTime_; }

    /// Number of steps after the start: at least one unless the run has no length. The last one may
    /// be shorter, and is up to a millionth of a step longer where the division leaves a rest that
    /// is rounding.
    [[nodiscard]] std::int64_t stepCount() const { return stepCount_; }

    /// The communication point after `step` steps: 0 is the start, from stepCount() on it is the
    /// stop time exactly.
    [[nodiscard]] double timeAt(std::int64_t step) const;

  private:
    double startTime_;
    double stopTime_;
    double stepSize_;
    std::int64_t stepCount_;
};

} // namespace program_support
