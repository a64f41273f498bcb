#include "reference_host/cosim_host/run_driver.h"

#include "platform/files.h"
#include "program_support/interrupt.h"
#include "program_support/number_text.h"

#include <cmath>
#include <cstdio>
#include <exception>
#include <system_error>

namespace cosim_host {

using program_support::ProgressBar;
using program_support::shortNumber;
using Clock = std::chrono::steady_clock;

namespace {

double secondsSince(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

} // namespace

std::size_t stepCount(const RunPlan& plan) {
    constexpr double smallestStep = 1e-6; // of a whole one
    return static_cast<std::size_t>(std::ceil(plan.stopTime / plan.stepSize - smallestStep));
}

double communicationPoint(const RunPlan& plan, std::size_t step) {
    return step >= stepCount(plan) ? plan.stopTime : static_cast<double>(step) * plan.stepSize;
}

RunDriver::RunDriver(Solver& solver, reference_host::Simulation& simulation, HostModel& model,
                     Recorder& recorder, const RunPlan& plan)
    : solver_(solver),
      simulation_(simulation),
      model_(model),
      recorder_(recorder),
      plan_(plan) {}

RunReport RunDriver::run(ProgressBar& progress) {
    ModelManager* manager = simulation_.modelManager();
    const bool configured = perform("printBanner", [&] { solver_.printBanner(); }) &&
                            perform("parseCommandLine", [&] { solver_.parseCommandLine(manager); });
    if (!configured) {
        return report_;
    }
    if (perform("setUp", [&] { solver_.setUp(manager); }) && begin()) {
        stepThrough(progress);
    }
    progress.finish();
    perform("terminate", [&] { solver_.terminate(); });
    return report_;
}

bool RunDriver::begin() {
    constexpr int firstIteration = 0;
    return perform("applyInitialInputs",
                   [&] {
                       model_.impose(0.0);
                       solver_.applyInitialInputs(firstIteration);
                   }) &&
           perform("start", [&] { solver_.start(); }) && perform("writeInitialOutputs", [&] {
               solver_.writeInitialOutputs(firstIteration);
               recorder_.record(0.0);
           });
}

void RunDriver::stepThrough(ProgressBar& progress) {
    const Clock::time_point begin = Clock::now();
    const std::size_t count = stepCount(plan_);
    while (report_.steps < count) {
        if (mustStop(begin)) {
            report_.outcome = RunOutcome::Interrupted;
            break;
        }
        if (!step(report_.steps)) {
            break;
        }
        ++report_.steps;
        report_.reachedTime = communicationPoint(plan_, report_.steps);
        progress.update(report_.reachedTime);
    }
    report_.elapsed = secondsSince(begin);
}

bool RunDriver::step(std::size_t index) {
    const double from = communicationPoint(plan_, index);
    const double to = communicationPoint(plan_, index + 1);
    return perform("applyInputs",
                   [&] {
                       model_.impose(from);
                       solver_.applyInputs(from);
                   }) &&
           perform("solveTo", [&] { solver_.solveTo(to); }) && perform("writeOutputs", [&] {
               solver_.writeOutputs(to);
               model_.advance(from, to);
               recorder_.record(to);
           });
}

template <typename Call>
bool RunDriver::perform(const char* operation, Call call) {
    try {
        call();
    } catch (const std::exception& error) {
        return fail(operation, error.what());
    }
    return acceptFailureCode(operation);
}

bool RunDriver::acceptFailureCode(const char* operation) {
    const int code = simulation_.failureCode();
    if (code == reportedCode_) {
        return true;
    }
    reportedCode_ = code;
    fail(operation,
         "the solver reported failure code " + std::to_string(code) + "; " + placeOfReason());
    return plan_.keepGoing;
}

std::string RunDriver::placeOfReason() const {
    std::error_code error;
    return std::filesystem::exists(plan_.solverLog, error)
               ? "the end of its log '" + platform::narrowPath(plan_.solverLog) + "' says why"
               : "the lines above say why; try fmu_run --validate with the FMU";
}

bool RunDriver::fail(const char* operation, const std::string& problem) {
    std::fprintf(stderr, "cosim_host: %s at %s s: %s\n", operation,
                 shortNumber(report_.reachedTime).c_str(), problem.c_str());
    report_.outcome = RunOutcome::Failed;
    return false;
}

bool RunDriver::mustStop(Clock::time_point begin) const {
    return program_support::interrupted() ||
           (plan_.timeout && secondsSince(begin) >= *plan_.timeout);
}

} // namespace cosim_host
