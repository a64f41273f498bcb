// Every allocation that the solver's operations make, the host's answers to them included, fails
// once.
#include "create_solver.h"
#include "host/solver.h"
#include "reference_host/simulation.h"
#include "support/failing_allocator.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

/// Asked for by the leak checker of the sanitizers, which knows nothing of hasNoResultsFile().
/// Whether anything else is left, the test counts.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming): theirs
extern "C" const char* __lsan_default_suppressions() {
    return "leak:solver_plugin::openFmu";
}

namespace {

using namespace failing_allocator;
using namespace test_support;

constexpr int componentCount = 1;

/// Runs of the shock absorber in a directory, each by a host and a solver of its own.
class PluginRuns {
  public:
    // The parameter has the value that the FMU gives it: an entry that cannot be kept is left out
    // with a line on the console.
    PluginRuns() {
        writeFile(parameters_, R"(<FMUSettings Version="1.0"><Parameters>)"
                               R"(<Parameter Name="sealFriction" Type="Real">30</Parameter>)"
                               "</Parameters></FMUSettings>");
    }

    /// True when no operation reported a failure.
    bool run() {
        reference_host::Simulation host;
        host.setWorkingDirectory(narrow(directory_.path()));
        host.setModelFilePath(narrow(directory_ / "case.xml"));
        host.setCommandLine("\"" + narrow(fmuPath("shock_absorber")) + "\" -parameterfile \"" +
                            parameters_ + "\"");
        host.addCoupledCondition("velocity", componentCount).setValue(0, 0, 0.2);
        host.addOutputResult("force", "Force", componentCount);
        const bool finished = drive(host);
        return finished && host.failureCode() == 0;
    }

    [[nodiscard]] std::string results() const {
        return readFile(directory_ / "shock_absorber.csv");
    }

    [[nodiscard]] int failuresWhileParsing() const { return failuresWhileParsing_; }

    /// After this failure the runtime keeps what it has loaded.
    [[nodiscard]] bool hasNoResultsFile() const {
        return readFile(directory_ / "shock_absorber.out")
                   .find("Failed to setup results logging") != std::string::npos;
    }

  private:
    /// False when the solver is not there or memory runs out while its command line is parsed.
    bool drive(reference_host::Simulation& host) {
        const Counting counting;
        const std::unique_ptr<Solver> solver(createSolver());
        if (solver == nullptr) {
            return false;
        }
        solver->printBanner();
        try {
            solver->parseCommandLine(host.modelManager());
        } catch (const std::bad_alloc&) { // Nothing else: the command line is in order.
            ++failuresWhileParsing_;
            return false;
        }
        solver->setUp(host.modelManager());
        solver->applyInitialInputs(0);
        solver->start();
        solver->writeInitialOutputs(0);
        for (const double time : {0.1, 0.2}) {
            solver->applyInputs(time);
            solver->solveTo(time);
            solver->writeOutputs(time);
        }
        solver->terminate();
        return true;
    }

    TemporaryDirectory directory_;
    std::string parameters_ = narrow(directory_ / "parameters.xml");
    int failuresWhileParsing_ = 0;
};

TEST(PluginAllocation, FailsWithoutCrashLeakOrWrongSuccess) {
    std::string results;
    {
        PluginRuns runs;
        ASSERT_TRUE(runs.run());
        results = runs.results();
    }
    long failures = 0;
    int failuresWhileParsing = 0;
    for (long number = 1; number == 1 || hasFailed(); ++number) {
        PluginRuns runs; // In its own directory: of a library that stays loaded something is kept.
        const std::ptrdiff_t before = liveAllocations();
        failAllocation(number);
        const bool succeeded = runs.run();
        EXPECT_TRUE(liveAllocations() == before || runs.hasNoResultsFile())
            << "allocation " << number;
        EXPECT_TRUE(!succeeded || runs.results() == results) << "allocation " << number;
        failures += succeeded ? 0 : 1;
        failuresWhileParsing += runs.failuresWhileParsing();
    }
    EXPECT_GT(failures, 20);
    EXPECT_GT(failuresWhileParsing, 5);
}

} // namespace
