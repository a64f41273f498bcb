#include "programs/support/step_grid.h"

#include <algorithm>
#include <cmath>

namespace program_support {
namespace {

/// A rest of the last step below this share of it is rounding, not a step of its own.
constexpr double roundingShare = 1e-6;

std::int64_t countSteps(double length, double stepSize) {
    const auto count = static_cast<std::int64_t>(std::ceil(length / stepSize - roundingShare));
    return std::max<std::int64_t>(count, length > 0.0 ? 1 : 0);
}

} // namespace

StepGrid::StepGrid(double startTime, double stopTime, double stepSize)
    : startTime_(startTime),
      stopTime_(stopTime),
      stepSize_(stepSize),
      stepCount_(countSteps(stopTime - startTime, stepSize)) {}

double StepGrid::timeAt(std::int64_t step) const {
    return step >= stepCount_ ? stopTime_ : startTime_ + static_cast<double>(step) * stepSize_;
}

} // namespace program_support
