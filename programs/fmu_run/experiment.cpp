#include "fmu_run/experiment.h"

#include "program_support/input_error.h"
#include "program_support/number_text.h"

#include <algorithm>
#include <cmath>

namespace fmu_run {

using program_support::InputError;
using program_support::shortNumber;

namespace {

/// A rest of the last interval below this share of it is rounding, not a step of its own.
constexpr double roundingShare = 1e-6;

/// Beyond it neighbouring points could not be told apart anyway.
constexpr double mostSteps = 1e15;

struct Time {
    double value;
    std::string origin; ///< For messages: the option, or that the FMU says so.
};

Time chosen(const std::optional<double>& option, const std::string& name, double defaultValue) {
    if (option) {
        return {*option, name + " " + shortNumber(*option)};
    }
    return {defaultValue, "the FMU's default " + name.substr(2) + " " + shortNumber(defaultValue)};
}

std::int64_t countSteps(double length, double interval) {
    const auto count = static_cast<std::int64_t>(std::ceil(length / interval - roundingShare));
    return std::max<std::int64_t>(count, length > 0.0 ? 1 : 0);
}

} // namespace

Experiment::Experiment(const Options& options, const DefaultExperiment& defaults) {
    const auto start = chosen(options.startTime, "--start-time", defaults.startTime);
    const auto stop = chosen(options.stopTime, "--stop-time", defaults.stopTime);
    const auto interval = chosen(options.outputInterval, "--output-interval", defaults.stepSize);
    if (!std::isfinite(start.value) || start.value < 0.0) {
        throw InputError(start.origin + " cannot be used, the FMU's clock begins at 0; give a "
                                        "--start-time of 0 or later");
    }
    if (!std::isfinite(stop.value) || stop.value < start.value) {
        throw InputError(stop.origin + " lies before " + start.origin +
                         "; give a later --stop-time");
    }
    const double length = stop.value - start.value;
    if (!(interval.value > 0.0) || !(length / interval.value < mostSteps)) {
        throw InputError(interval.origin + " cannot be used; give an --output-interval greater "
                                           "than 0, such as 0.001");
    }
    startTime_ = start.value;
    stopTime_ = stop.value;
    interval_ = interval.value;
    stepCount_ = countSteps(length, interval_);
}

double Experiment::timeAt(std::int64_t step) const {
    return step >= stepCount_ ? stopTime_ : startTime_ + static_cast<double>(step) * interval_;
}

} // namespace fmu_run
