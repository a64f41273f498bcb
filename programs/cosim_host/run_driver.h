#pragma once

#include "host/solver.h"
#include "programs/cosim_host/host_model.h"
#include "programs/cosim_host/recorder.h"
#include "programs/cosim_host/solver_files.h"
#include "programs/support/early_end.h"
#include "programs/support/kept_output.h"
#include "programs/support/progress_bar.h"
#include "programs/support/step_grid.h"
#include "reference_host/simulation.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace cosim_host {

/// When and how a run steps; times in seconds.
struct RunPlan {
    double stepSize = 0.001;
    double stopTime = 16.0;
    bool keepGoing = false;             ///< Go on after a failure code.
    const SolverFiles* files = nullptr; ///< In whose log the solver tells why it failed, if in one.
    std::filesystem::path keptIn;       ///< Holds what the solver prints; empty: it is not kept.
    std::FILE* errors = stderr;         ///< Where failures are reported.
};

struct Operation;

enum class RunOutcome { completed, failed, interrupted };

/// How a run went.
struct RunReport {
    RunOutcome outcome = RunOutcome::completed;
    std::int64_t steps = 0;
    double reachedTime = 0.0; ///< Simulated seconds.
    double elapsed = 0.0;     ///< Seconds of the clock, without setting up and terminating.
    std::vector<std::string> complaints; ///< That the solver printed.
};

/// Drives a solver through a run in the order that solvers are built for. After each operation it
/// looks at the failure code, which it resets before, and reports one.
class RunDriver {
  public:
    /// All that is passed in must outlive the driver.
    RunDriver(Solver& solver, reference_host::Simulation& simulation, HostModel& model,
              Recorder& recorder, const RunPlan& plan);

    /// The whole run, once. Ends early, but always with terminate, when an operation fails, and when
    /// `earlyEnd` is due.
    RunReport run(const program_support::EarlyEnd& earlyEnd,
                  program_support::ProgressBar& progress);

  private:
    bool begin();
    void stepThrough(const program_support::EarlyEnd& earlyEnd,
                     program_support::ProgressBar& progress);
    bool step(std::int64_t index);
    template <typename Call>
    bool received(const char* operation, Call call);
    template <typename Call>
    bool perform(const Operation& operation, Call call);
    bool acceptFailureCode(const char* operation);
    bool failWithReason(const char* operation, const std::string& problem);
    program_support::KeptMessages takeMessages();
    bool fail(const char* operation, const std::string& problem);

    Solver& solver_;
    reference_host::Simulation& simulation_;
    HostModel& model_;
    Recorder& recorder_;
    RunPlan plan_;
    program_support::StepGrid grid_;
    RunReport report_;
};

} // namespace cosim_host
