// The end of a run whose clean-up fails, which no FMU can bring about: this program's own
// fmiToolsCleanup() stands before the library's.
#include "create_solver.h"
#include "fmi_tools.h"
#include "host/solver.h"
#include "reference_host/simulation.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr int refused = -1;

int cleanups = 0;

TEST(Terminate, ReportsAFailedCleanup) {
    reference_host::Simulation host;
    const std::unique_ptr<Solver> solver(createSolver());
    solver->setModelManager(host.modelManager());
    solver->terminate();
    EXPECT_EQ(cleanups, 1);
    EXPECT_EQ(host.failureCode(), 5);
}

} // namespace

int32_t fmiToolsCleanup(FmiToolsInstance* /*instance*/) {
    ++cleanups;
    return refused;
}
