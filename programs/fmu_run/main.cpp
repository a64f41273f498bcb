#include "programs/fmu_run/info_json.h"
#include "programs/fmu_run/info_table.h"
#include "programs/fmu_run/options.h"
#include "programs/fmu_run/parameters_template.h"
#include "programs/fmu_run/run_failure.h"
#include "programs/fmu_run/simulation.h"
#include "programs/fmu_run/validation.h"
#include "programs/support/command_line.h"
#include "programs/support/exit_status.h"
#include "programs/support/input_error.h"
#include "programs/support/input_files.h"

#include <iostream>

namespace {

using namespace fmu_run;

FmuDescription descriptionOf(const Options& options) {
    program_support::requireReadableFile(options.model);
    return describeFmu(options.model);
}

int perform(const Options& options) {
    if (options.validate) {
        return validate(options);
    }
    if (options.info == "json") {
        printInfoJson(std::cout, descriptionOf(options));
    } else if (!options.info.empty()) {
        printInfoTable(std::cout, descriptionOf(options));
    } else if (options.writeParameters) {
        printParametersFile(std::cout, descriptionOf(options));
    } else {
        return simulate(options);
    }
    return 0;
}

int run(int argc, char** argv) {
    Options options;
    CLI::App app;
    program_support::beginCommandLine(
        app, "fmu_run",
        "Simulates an FMU of FMI 2.0 for Co-Simulation. The values of its Real variables over time "
        "go to MODEL.csv, the log to MODEL.out, both in the current directory.");
    addOptions(app, options);
    try {
        if (const auto exitStatus = program_support::readCommandLine(app, argc, argv)) {
            return *exitStatus;
        }
    } catch (const program_support::InputError&) {
        const auto problem = startValueProblem(argc, argv);
        if (!problem.empty()) {
            throw program_support::InputError(problem);
        }
        throw;
    }
    completeOptions(options);
    try {
        return perform(options);
    } catch (const RunFailure& failure) {
        std::cerr << "fmu_run: '" << options.model << "' failed: " << failure.what() << '\n';
        return program_support::failedStatus;
    }
}

} // namespace

int main(int argc, char** argv) {
    return program_support::exitStatusOf("fmu_run", [&] { return run(argc, argv); });
}
