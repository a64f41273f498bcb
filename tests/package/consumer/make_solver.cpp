#include <create_solver.h>
#include <fmi_tools.h>

// Both faces of the plug-in are there: the factory, and the runtime beneath it.
int main() {
    return createSolver() != nullptr && fmiToolsSetEndTime(nullptr, 1.0) == -1 ? 0 : 1;
}
