#pragma once

#include "host/solver.h"
#include "program_support/progress_bar.h"
#include "reference_host/cosim_host/host_model.h"
#include "reference_host/cosim_host/recorder.h"
#include "reference_host/simulation.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace cosim_host {

/// When and how a run steps; times in seconds.
struct RunPlan {
    double stepSize = 0.001;
    double stopTime = 16.0;
    std::optional<double> timeout;   ///< Of the clock, after which the run ends between two steps.
    bool keepGoing = false;          ///< Go on after a failure code.
    std::filesystem::path solverLog; ///< Where the solver tells why it failed.
};

enum class RunOutcome { Completed, Failed, Interrupted };

/// How a run went.
struct RunReport {
    RunOutcome outcome = RunOutcome::Completed;
    std::size_t steps = 0;
    double reachedTime = 0.0; ///< Simulated seconds.
    double elapsed = 0.0;     ///< Seconds of the clock, without setting up and terminating.
};

/// Number of communication steps of a plan. The last one may be shorter, and is up to a millionth
/// of a step longer where the division leaves a rest that is none.
std::size_t stepCount(const RunPlan& plan);

/// The communication point after `step` steps. Each is computed on its own, so that no error
/// accumulates, and the last one is the stop time exactly.
double communicationPoint(const RunPlan& plan, std::size_t step);

/// Drives a solver through a run in the order that solvers are built for. After each operation it
/// looks at the failure code and reports a new one on standard error.
class RunDriver {
  public:
    /// All that is passed in must outlive the driver.
    RunDriver(Solver& solver, reference_host::Simulation& simulation, HostModel& model,
              Recorder& recorder, const RunPlan& plan);

    /// The whole run, once. Ends early, but always with terminate, when an operation fails, on an
    /// interrupt, and at the timeout.
    RunReport run(program_support::ProgressBar& progress);

  private:
    bool begin();
    void stepThrough(program_support::ProgressBar& progress);
    bool step(std::size_t index);
    template <typename Call>
    bool perform(const char* operation, Call call);
    bool acceptFailureCode(const char* operation);
    [[nodiscard]] std::string placeOfReason() const;
    bool fail(const char* operation, const std::string& problem);
    [[nodiscard]] bool mustStop(std::chrono::steady_clock::time_point begin) const;

    Solver& solver_;
    reference_host::Simulation& simulation_;
    HostModel& model_;
    Recorder& recorder_;
    RunPlan plan_;
    RunReport report_;
    int reportedCode_ = 0;
};

} // namespace cosim_host
