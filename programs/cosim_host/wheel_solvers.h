#pragma once

#include "host/solver.h"
#include "programs/cosim_host/car.h"
#include "programs/cosim_host/solver_files.h"
#include "reference_host/simulation.h"

#include <array>
#include <string>

namespace cosim_host {

/// The solver of one wheel's tyre. What is pointed to must outlive its use.
struct WheelSolver {
    std::string wheel;
    Solver* solver = nullptr;
    reference_host::Simulation* simulation = nullptr; ///< The solver's own.
    const SolverFiles* files = nullptr;
};

/// The solvers of a car's four tyres as one: each operation is that of all four, wheel by wheel. They
/// know nothing of each other, since each has a simulation of its own.
///
/// A failure of one ends the operation by a std::runtime_error that names the wheel.
class WheelSolvers : public Solver {
  public:
    explicit WheelSolvers(const std::array<WheelSolver, wheelCount>& wheels) : wheels_(wheels) {}

    // Those of the whole run.
    void printBanner() override;
    void parseCommandLine(ModelManager* ownManagersAreUsed) override;
    void setUp(ModelManager* ownManagersAreUsed) override;
    void start() override;

    /// Ends those that were set up, all of them, and reports the first failure afterwards.
    void terminate() override;

    // Those of the exchange.
    void applyInitialInputs(int iteration) override;
    void writeInitialOutputs(int iteration) override;
    void applyInputs(double time) override;
    void solveTo(double time) override;
    void writeOutputs(double time) override;

  private:
    template <typename Operation>
    void eachWheel(Operation operation);
    static void requireNoFailure(const WheelSolver& wheel);
    [[noreturn]] static void fail(const WheelSolver& wheel, const std::string& problem);

    std::array<WheelSolver, wheelCount> wheels_;
    std::size_t setUpCount_ = 0;
};

} // namespace cosim_host
