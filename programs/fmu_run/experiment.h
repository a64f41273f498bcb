#pragma once

#include "fmu_run/model_information.h"
#include "fmu_run/options.h"

#include <cstdint>

namespace fmu_run {

/// The communication points of a simulation: start time plus multiples of the interval, and at last
/// the stop time itself. Each is computed from the start, so that no rounding piles up.
class Experiment {
  public:
    /// From the options, where they are silent from the FMU's default experiment. Throws InputError
    /// naming the value that cannot be used.
    Experiment(const Options& options, const DefaultExperiment& defaults);

    [[nodiscard]] double startTime() const { return startTime_; }

    [[nodiscard]] double stopTime() const { return stopTime_; }

    /// Number of steps after the start.
    [[nodiscard]] std::int64_t stepCount() const { return stepCount_; }

    /// Communication point `step`: 0 is the start, stepCount() the stop time.
    [[nodiscard]] double timeAt(std::int64_t step) const;

  private:
    double startTime_ = 0.0;
    double stopTime_ = 0.0;
    double interval_ = 0.0;
    std::int64_t stepCount_ = 0;
};

} // namespace fmu_run
