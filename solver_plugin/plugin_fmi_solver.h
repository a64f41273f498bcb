#pragma once

#include "host/solver.h"
#include "solver_plugin/solver_core.h"

#include <cstdint>
#include <memory>

namespace solver_plugin {

/// The solver that a host gets from createSolver(): runs one FMU as partner of the host's model.
///
/// A failed operation writes its code into integer parameter 11 of the solution's parameters and
/// returns normally; success writes nothing. What the operation threw, or what the host's objects
/// threw at it, is an error line in the run's log before, on standard output while there is no log.
/// Only parseCommandLine() and start() throw, and only what is said there. After a failed setUp()
/// every other operation may still be called. Its end leaves the FMU loaded unless terminate() was
/// called.
class PluginFmiSolver final : public Solver {
  public:
    /// Makes a solver without an FMU. When there is no memory for its members it is made all the
    /// same, and its operations fail.
    PluginFmiSolver();

    /// Logs build and tool chain to the host's log.
    void printBanner() override;

    /// Reads the command line (string parameter 3 of the solver settings) into the options.
    ///
    /// @throws std::runtime_error when there is no command line or it holds no token
    /// @throws std::bad_alloc when memory runs out
    void parseCommandLine(ModelManager* modelManager) override;

    /// Loads the FMU and opens log and results. Code 4, written into the settings that
    /// Solver::getSolutionSettings() answers.
    void setUp(ModelManager* modelManager) override;

    /// Sets the FMU's inputs from the coupled conditions. Code 4.
    void applyInitialInputs(int iteration) override;

    /// Applies the FMU parameters, enters initialisation mode, checks the FMU's kind. Code 4.
    ///
    /// @throws std::runtime_error when the FMU is not of the declared kind. It is of exactly that
    ///         class, so that nothing of it lies in this library, which the host may unload first.
    void start() override;

    /// Fills the output results from the FMU. Code 4.
    void writeInitialOutputs(int iteration) override;

    /// Sets the FMU's inputs from the coupled conditions, unless the host skips the step. Code 5.
    void applyInputs(double time) override;

    /// Advances the FMU to `time` (seconds), unless the host skips the step; the first call takes
    /// it out of initialisation mode before. Code 5.
    void solveTo(double time) override;

    /// Fills the output results from the FMU, unless the host skips the step. Code 3.
    void writeOutputs(double time) override;

    /// Ends the FMU and frees what belongs to it. Code 5.
    void terminate() override;

  private:
    /// What `operation` answers; -1, after an error line in the log, when it throws.
    template <typename Operation>
    std::int32_t resultOf(const char* name, Operation operation) const;

    /// Runs `operation` and reports a negative result to the host as `failureCode`.
    template <typename Operation>
    void perform(const char* name, int failureCode, Operation operation) const;

    /// perform() for the operations of a step, which the host can switch off.
    template <typename Operation>
    void performStep(const char* name, int failureCode, Operation operation) const;

    void report(const char* name, int failureCode, std::int32_t result) const;

    void tellHostOfMovedFiles() const;

    [[nodiscard]] std::int32_t setInputs() const;
    [[nodiscard]] std::int32_t getOutputs() const;

    /// @throws std::bad_alloc when there was no memory for it
    [[nodiscard]] SolverCore& core() const;

    std::unique_ptr<SolverCore> core_;
};

} // namespace solver_plugin
