/* Runs an FMU for one second in steps of a millisecond.
 *
 *   run_fmu MODEL.fmu [INPUT VALUE OUTPUT]
 *
 * INPUT is held at VALUE, and OUTPUT is printed at the end. The FMU is unpacked into ./run_fmu; the
 * results are in run_fmu.csv, the log is in run_fmu.out. */
#include <fmi_tools.h>
#include <stdio.h>
#include <stdlib.h>

static int simulate(FmiToolsInstance* fmu, const char* input, double value) {
    for (int step = 1; step <= 1000; ++step) {
        if (input != NULL && fmiToolsSetRealVariableValue(fmu, input, value) < 0) {
            return -1;
        }
        /* Each time computed from its index: adding up steps would drift away from the end. */
        if (fmiToolsSimulateToT(fmu, step / 1000.0) < 0) {
            return -1;
        }
    }
    return 0;
}

int main(int argc, char** argv) {
    if (argc != 2 && argc != 5) {
        fprintf(stderr, "usage: run_fmu MODEL.fmu [INPUT VALUE OUTPUT]\n");
        return 2;
    }
    FmiToolsInstance* fmu = fmiToolsLoadFmu(argv[1], "run_fmu", "./");
    if (fmu == NULL) {
        return 1;
    }
    fmiToolsSetLogFile(fmu, "run_fmu.out");
    fmiToolsSetResultsFile(fmu, "run_fmu.csv");
    printf("made by: %s\n", fmiToolsGetGenerationTool(fmu));

    int result = fmiToolsInitialize(fmu);
    if (result == 0) {
        result = simulate(fmu, argc == 5 ? argv[2] : NULL, argc == 5 ? strtod(argv[3], NULL) : 0.0);
    }
    double output = 0.0;
    if (result == 0 && argc == 5) {
        result = fmiToolsGetRealVariableValue(fmu, argv[4], &output);
        printf("%s = %g\n", argv[4], output);
    }
    fmiToolsCleanup(fmu);
    return result == 0 ? 0 : 1;
}
