#include "programs/fmu_run/experiment.h"

#include "programs/support/input_error.h"
#include "programs/support/number_text.h"

#include <cmath>
#include <string>

namespace fmu_run {

using program_support::InputError;
using program_support::shortNumber;
using program_support::StepGrid;

namespace {

/// More would not end on any day that the user waits for.
constexpr double mostSteps = 1e9;

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

} // namespace

StepGrid experimentGrid(const Options& options, const DefaultExperiment& defaults) {
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
    if (!(interval.value > 0.0) || !(length / interval.value <= mostSteps)) {
        throw InputError(interval.origin + " cannot be used, it makes no run of at most 1e9 steps; "
                                           "give a greater --output-interval, such as 0.001");
    }
    return {start.value, stop.value, interval.value};
}

} // namespace fmu_run
