#include <host/solver.h>

#include <create_solver.h>
#include <fmi_tools.h>
#include <memory>

// Both faces of the plug-in are there: a solver that is called through the host's class, and the runtime
// beneath it.
int main() {
    const std::unique_ptr<Solver> solver(createSolver());
    if (!solver) {
        return 1;
    }
    solver->printBanner();
    return fmiToolsSetEndTime(nullptr, 1.0) == -1 ? 0 : 1;
}
