// Steps an FMU, for tests that end it from outside.
//   step_driver FMU DIRECTORY [STEPS]
// DIRECTORY gets the log, the results and "progress": a line with the number of each finished step.
// Without STEPS it goes on until it is killed.
#include "fmi_tools.h"
#include "platform/output_file.h"

#include <cstdlib>
#include <limits>
#include <string>

int main(int argc, char** argv) {
    if (argc < 3) {
        return EXIT_FAILURE;
    }
    const std::string directory = std::string(argv[2]) + '/';
    FmiToolsInstance* fmu =
        fmiToolsLoadFmu(argv[1], (directory + "unpacked").c_str(), directory.c_str());
    if (fmu == nullptr) {
        return EXIT_FAILURE;
    }
    fmiToolsSetLogFile(fmu, (directory + "run.out").c_str());
    fmiToolsSetResultsFile(fmu, (directory + "run.csv").c_str());
    platform::OutputFile progress((directory + "progress").c_str());
    bool fine = progress.isOpen() && fmiToolsInitialize(fmu) == 0;
    const long steps =
        argc > 3 ? std::strtol(argv[3], nullptr, 10) : std::numeric_limits<long>::max();
    for (long step = 1; step <= steps && fine; ++step) {
        fine = fmiToolsSimulateToT(fmu, static_cast<double>(step) * 1e-3) == 0 &&
               progress.write(std::to_string(step) + '\n');
    }
    fmiToolsCleanup(fmu);
    return fine ? EXIT_SUCCESS : EXIT_FAILURE;
}
