// A run of the solver among others, for tests that end it from outside.
//   run_driver FMU DIRECTORY NOTES STEPS OPTIONS
// NOTES gets the names of log and results when the run is set up, and then, once there is a file
// NOTES.go, a line for each finished step.
#include "platform/output_file.h"
#include "solver_plugin/solver_run.h"

#include <chrono>
#include <cstdlib>
#include <thread>

int main(int argc, char** argv) {
    if (argc != 6) {
        return EXIT_FAILURE;
    }
    test_support::SolverRun run(argv[2], argv[1], argv[5]);
    platform::OutputFile notes(argv[3]);
    bool fine = run.begin() == 0 && notes.write(run.logFile().filename().string() + '\n' +
                                                run.resultsFile().filename().string() + '\n');
    while (fine && !std::filesystem::exists(std::string(argv[3]) + ".go")) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    const long steps = std::strtol(argv[4], nullptr, 10);
    for (long step = 1; step <= steps && fine; ++step) {
        fine = run.step(static_cast<double>(step) * 1e-3) == 0 &&
               notes.write(std::to_string(step) + '\n');
    }
    run.end();
    return fine ? EXIT_SUCCESS : EXIT_FAILURE;
}
