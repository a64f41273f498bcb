#include "programs/cosim_host/run_driver.h"

#include "platform/files.h"
#include "programs/support/call_watch.h"
#include "programs/support/number_text.h"
#include "programs/support/run_log.h"
#include "programs/support/terminal_text.h"

#include <chrono>
#include <cstdio>
#include <exception>

namespace cosim_host {

using program_support::EarlyEnd;
using program_support::ProgressBar;
using program_support::shortNumber;
using Clock = std::chrono::steady_clock;

/// An operation of the solver, and the FMI functions that it calls, for messages.
struct Operation {
    const char* name;
    const char* call;
};

namespace {

constexpr Operation printBanner{"printBanner", "printBanner"};
constexpr Operation parseCommandLine{"parseCommandLine", "parseCommandLine"};
constexpr Operation setUp{"setUp", "setUp (fmi2Instantiate)"};
constexpr Operation applyInitialInputs{"applyInitialInputs", "applyInitialInputs (fmi2SetReal)"};
constexpr Operation start{"start", "start (fmi2SetupExperiment, fmi2EnterInitializationMode)"};
constexpr Operation writeInitialOutputs{"writeInitialOutputs", "writeInitialOutputs (fmi2GetReal)"};
constexpr Operation applyInputs{"applyInputs", "applyInputs (fmi2SetReal)"};
constexpr Operation solveTo{"solveTo", "solveTo (fmi2DoStep)"};
constexpr Operation writeOutputs{"writeOutputs", "writeOutputs (fmi2GetReal)"};
constexpr Operation terminate{"terminate", "terminate (fmi2Terminate, fmi2FreeInstance)"};

double secondsSince(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

} // namespace

RunDriver::RunDriver(Solver& solver, reference_host::Simulation& simulation, HostModel& model,
                     Recorder& recorder, const RunPlan& plan)
    : solver_(solver),
      simulation_(simulation),
      model_(model),
      recorder_(recorder),
      plan_(plan),
      grid_(0.0, plan.stopTime, plan.stepSize) {}

RunReport RunDriver::run(const EarlyEnd& earlyEnd, ProgressBar& progress) {
    ModelManager* manager = simulation_.modelManager();
    const bool configured = perform(printBanner, [&] { solver_.printBanner(); }) &&
                            perform(parseCommandLine, [&] { solver_.parseCommandLine(manager); });
    if (!configured) {
        takeMessages();
        return report_;
    }
    if (perform(setUp, [&] { solver_.setUp(manager); }) && begin()) {
        stepThrough(earlyEnd, progress);
    }
    progress.finish();
    perform(terminate, [&] { solver_.terminate(); });
    takeMessages();
    return report_;
}

bool RunDriver::begin() {
    constexpr int firstIteration = 0;
    return perform(applyInitialInputs,
                   [&] {
                       model_.impose(0.0);
                       solver_.applyInitialInputs(firstIteration);
                   }) &&
           perform(start, [&] { solver_.start(); }) &&
           perform(writeInitialOutputs, [&] { solver_.writeInitialOutputs(firstIteration); }) &&
           received(writeInitialOutputs.name, [&] { recorder_.record(0.0); });
}

void RunDriver::stepThrough(const EarlyEnd& earlyEnd, ProgressBar& progress) {
    const Clock::time_point begin = Clock::now();
    while (report_.steps < grid_.stepCount()) {
        if (earlyEnd.isDue()) {
            report_.outcome = RunOutcome::interrupted;
            break;
        }
        if (!step(report_.steps)) {
            break;
        }
        ++report_.steps;
        report_.reachedTime = grid_.timeAt(report_.steps);
        progress.update(report_.reachedTime);
    }
    report_.elapsed = secondsSince(begin);
}

bool RunDriver::step(std::int64_t index) {
    const double from = grid_.timeAt(index);
    const double to = grid_.timeAt(index + 1);
    return perform(applyInputs,
                   [&] {
                       model_.impose(from);
                       solver_.applyInputs(from);
                   }) &&
           perform(solveTo, [&] { solver_.solveTo(to); }) &&
           perform(writeOutputs, [&] { solver_.writeOutputs(to); }) &&
           received(writeOutputs.name, [&] {
               model_.advance(from, to);
               recorder_.record(to);
           });
}

template <typename Call>
bool RunDriver::received(const char* operation, Call call) {
    try {
        call();
        return true;
    } catch (const std::exception& error) {
        return fail(operation, error.what());
    }
}

template <typename Call>
bool RunDriver::perform(const Operation& operation, Call call) {
    simulation_.resetFailureCode();
    try {
        const program_support::ForeignCall active(operation.call, report_.reachedTime);
        call();
    } catch (const std::exception& error) {
        return failWithReason(operation.name, error.what());
    }
    return acceptFailureCode(operation.name);
}

bool RunDriver::acceptFailureCode(const char* operation) {
    const int code = simulation_.failureCode();
    if (code == 0) {
        return true;
    }
    failWithReason(operation, "the solver reported failure code " + std::to_string(code));
    return plan_.keepGoing;
}

bool RunDriver::failWithReason(const char* operation, const std::string& problem) {
    const std::string reason = takeMessages().reason();
    const std::string inLog =
        plan_.files == nullptr
            ? ""
            : "; " + program_support::reasonInLog(platform::narrowPath(plan_.files->log));
    return fail(operation, problem + reason + inLog);
}

/// What failed is reported at once, what was complained of in the end.
program_support::KeptMessages RunDriver::takeMessages() {
    if (plan_.keptIn.empty()) {
        return {};
    }
    auto messages = program_support::takeKeptMessages(plan_.keptIn);
    report_.complaints.insert(report_.complaints.end(), messages.complaints.begin(),
                              messages.complaints.end());
    return messages;
}

bool RunDriver::fail(const char* operation, const std::string& problem) {
    std::fprintf(plan_.errors, "cosim_host: %s at %s s: %s\n", operation,
                 shortNumber(report_.reachedTime).c_str(),
                 program_support::terminalText(problem).c_str());
    report_.outcome = RunOutcome::failed;
    return false;
}

} // namespace cosim_host
