#include "programs/fmu_run/options.h"

#include "platform/files.h"
#include "platform/output_file.h"
#include "programs/support/command_line.h"
#include "programs/support/distinct_files.h"
#include "programs/support/exit_status.h"
#include "programs/support/input_error.h"

#include <iostream>

namespace fmu_run {

using program_support::addNumberOption;
using program_support::addTextOption;
using program_support::InputError;

namespace {

void addExperimentOptions(CLI::App& app, Options& options) {
    addNumberOption(app, "--start-time", options.startTime, "SECONDS",
                    "Where the results begin, 0 or later; the FMU itself always starts at 0");
    addNumberOption(app, "--stop-time", options.stopTime, "SECONDS", "Where the simulation ends");
    addNumberOption(app, "--output-interval", options.outputInterval, "SECONDS",
                    "Length of a step, and so between two rows of the results");
    app.add_option("--start-value", options.startValues,
                   "Set a variable before the initialisation; can be given again and again")
        ->type_name("NAME VALUE")
        ->allow_extra_args(false);
    addTextOption(app, "--input-file", options.inputFile, "CSV",
                  "Signals for the inputs: comma-separated, the first column is the time, each "
                  "other one is named as its input. Continuous Real inputs are interpolated "
                  "linearly, all others keep their value until the next row");
    program_support::addTimeoutOption(app, options.timeout);
}

void addFileOptions(CLI::App& app, Options& options) {
    addTextOption(app, "--output-file", options.outputFile, "CSV",
                  "The results (default: MODEL.csv in the current directory)");
    addTextOption(app, "--log-file", options.logFile, "FILE",
                  "The log (default: MODEL.out in the current directory)");
    program_support::addPlotOptions(
        app, options.plot, "results",
        "The variables to draw, separated by commas (default: the outputs)");
    addTextOption(app, "--working-directory", options.workingDirectory, "DIRECTORY",
                  "Where the FMU is unpacked and stays; without it, a temporary directory that is "
                  "removed at the end");
    app.add_flag("--debug-logging", options.debugLogging,
                 "Log debug lines, too, and show what the FMI library prints");
    app.add_flag("-q,--quiet", options.quiet, "Print nothing but errors");
}

void addTaskOptions(CLI::App& app, Options& options) {
    auto* info = app.add_flag("--info{table}", options.info,
                              "Print what the FMU is and its variables instead of simulating; "
                              "--info=json prints it for programs")
                     ->type_name("[=json]");
    auto* validate =
        app.add_flag("--validate", options.validate,
                     "Check the FMU instead of simulating, print each finding with its remedy, and "
                     "end with exit status 1 when there are errors");
    auto* parameters = app.add_flag("--write-parameters", options.writeParameters,
                                    "Print a parameters file with every parameter of the FMU "
                                    "instead of simulating");
    info->excludes(validate)->excludes(parameters);
    validate->excludes(parameters);
}

/// "tyre" for "models/tyre.fmu".
std::string stemOf(const std::string& path) {
    return platform::narrowPath(platform::nativePath(path).stem());
}

/// Fills in the names that were not given: after the model, and with a number where another run is
/// writing to one of those files.
void nameFiles(Options& options) {
    const bool wantsResults = options.outputFile.empty();
    const bool wantsLog = options.logFile.empty();
    const auto isTaken = [](const std::string& file) {
        return platform::isHeld(platform::nativePath(file));
    };
    std::string stem = stemOf(options.model);
    for (unsigned number = 2;
         (wantsResults && isTaken(stem + ".csv")) || (wantsLog && isTaken(stem + ".out"));
         ++number) {
        stem = stemOf(options.model) + '.' + std::to_string(number);
    }
    options.outputFile = wantsResults ? stem + ".csv" : options.outputFile;
    options.logFile = wantsLog ? stem + ".out" : options.logFile;
    if (stem != stemOf(options.model)) {
        std::cerr << "fmu_run: another run is writing to the usual files; this one writes '"
                  << options.outputFile << "' and '" << options.logFile << "'\n";
    }
}

void requireDistinctFiles(const Options& options) {
    program_support::requireDistinctFiles(
        {{options.model, "the FMU", ""}, {options.inputFile, "the input file", ""}},
        {{options.outputFile, "the results file", "--output-file"},
         {options.logFile, "the log file", "--log-file"},
         {options.plot.file, "the picture", "--plot"}});
}

} // namespace

void addOptions(CLI::App& app, Options& options) {
    app.add_option("MODEL", options.model, "The FMU, an FMI 2.0 archive for Co-Simulation")
        ->required()
        ->type_name("");
    addExperimentOptions(app, options);
    addFileOptions(app, options);
    addTaskOptions(app, options);
    app.footer(program_support::exitStatusHelp("the FMU"));
}

std::string startValueProblem(int argc, const char* const* argv) {
    for (int i = 1; i + 1 < argc; ++i) {
        const std::string text = argv[i + 1];
        const auto sign = text.find('=');
        if (argv[i] == std::string("--start-value") && sign != std::string::npos) {
            return "--start-value " + text + " is one word, name and value are two; write " +
                   "--start-value " + text.substr(0, sign) + " " + text.substr(sign + 1);
        }
    }
    return {};
}

void completeOptions(Options& options) {
    if (!options.info.empty() && options.info != "table" && options.info != "json") {
        throw InputError("--info=" + options.info + " is not known; give --info or --info=json");
    }
    program_support::requirePositive(options.timeout, "--timeout");
    program_support::checkPlotOptions(options.plot);
    if (options.info.empty() && !options.validate && !options.writeParameters) {
        nameFiles(options);
        requireDistinctFiles(options);
    }
}

} // namespace fmu_run
