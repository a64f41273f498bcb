/* The interface from C11, compiled from its header alone: a run of the scripted FMU. */
#include "fmi_tools.h"

#include <stdio.h>

#define CHECK(condition)                                                                           \
    if (!(condition)) {                                                                            \
        fprintf(stderr, "line %d: not so: %s\n", __LINE__, #condition);                            \
        return 1;                                                                                  \
    }

int main(int argc, char** argv) {
    CHECK(argc == 3)
    FmiToolsInstance* fmu = fmiToolsLoadFmu(argv[1], argv[2], "");
    CHECK(fmu != NULL)
    CHECK(fmiToolsSetLogFile(fmu, "c_interface.out") == 0)
    CHECK(fmiToolsSetResultsFile(fmu, "c_interface.csv") == 0)
    CHECK(fmiToolsSetVariableValue(fmu, "gain", "3") == 0)
    CHECK(fmiToolsSetRealVariableValue(fmu, "u", 0.5) == 0)
    CHECK(fmiToolsInitialize(fmu) == 0)
    CHECK(fmiToolsSimulateToT(fmu, 2.0) == 0)
    double x = 0.0;
    CHECK(fmiToolsGetRealVariableValue(fmu, "x", &x) == 0)
    CHECK(x == 3.0)
    CHECK(fmiToolsCleanup(fmu) == 0)
    return 0;
}
