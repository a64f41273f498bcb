#include "fmu_run/information.h"
#include "fmu_run/options.h"
#include "fmu_run/run_directory.h"
#include "fmu_run/simulation.h"
#include "fmu_run/validation.h"
#include "fmu_run/variable_value.h"
#include "program_support/command_line.h"
#include "program_support/input_error.h"

#include <iostream>

namespace {

using namespace fmu_run;

ModelInformation informationOf(const Options& options) {
    requireFile(options.model);
    const RunDirectory directory;
    return unpackModel(options.model, directory.unpackDirectory());
}

int perform(const Options& options) {
    if (options.validate) {
        return validate(options);
    }
    if (options.info == "json") {
        printInfoJson(std::cout, informationOf(options));
    } else if (!options.info.empty()) {
        printInfoTable(std::cout, informationOf(options));
    } else if (options.writeParameters) {
        printParametersFile(std::cout, informationOf(options));
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
    if (const auto exitStatus = program_support::readCommandLine(app, argc, argv)) {
        return *exitStatus;
    }
    completeOptions(options);
    try {
        return perform(options);
    } catch (const RunFailure& failure) {
        std::cerr << "fmu_run: '" << options.model << "' failed: " << failure.what()
                  << "; see the log '" << options.logFile << "'\n";
        return 1;
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const program_support::InputError& error) {
        std::cerr << "fmu_run: " << error.what() << '\n';
        return program_support::inputErrorStatus;
    } catch (const std::exception& error) {
        std::cerr << "fmu_run: " << error.what() << '\n';
        return 1;
    }
}
