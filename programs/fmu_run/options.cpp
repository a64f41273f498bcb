#include "fmu_run/options.h"

#include "platform/files.h"
#include "program_support/command_line.h"
#include "program_support/input_error.h"
#include "program_support/number_text.h"
#include "program_support/plot.h"

#include <filesystem>

namespace fmu_run {

using program_support::addNumberOption;
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
    app.add_option("--input-file", options.inputFile,
                   "Signals for the inputs: comma-separated, the first column is the time, each "
                   "other one is named as its input. Continuous Real inputs are interpolated "
                   "linearly, all others keep their value until the next row")
        ->type_name("CSV");
    addNumberOption(app, "--timeout", options.timeout, "SECONDS",
                    "End after that time of the clock, between two steps");
}

void addFileOptions(CLI::App& app, Options& options) {
    app.add_option("--output-file", options.outputFile,
                   "The results (default: MODEL.csv in the current directory)")
        ->type_name("CSV");
    app.add_option("--log-file", options.logFile,
                   "The log (default: MODEL.out in the current directory)")
        ->type_name("FILE");
    app.add_option("--plot", options.plotFile,
                   "Draw results over time into a picture, FILE.svg or FILE.png (needs gnuplot)")
        ->type_name("FILE");
    app.add_option("--plot-columns", options.plotColumns,
                   "The variables to draw, separated by commas (default: the outputs)")
        ->type_name("NAMES");
    app.add_option("--working-directory", options.workingDirectory,
                   "Where the FMU is unpacked and stays; without it, a temporary directory that is "
                   "removed at the end")
        ->type_name("DIRECTORY");
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
                     "end with the number of errors as exit status");
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

bool sameFile(const std::string& first, const std::string& second) {
    std::error_code error;
    const auto absoluteFirst =
        std::filesystem::weakly_canonical(platform::nativePath(first), error);
    const auto absoluteSecond =
        std::filesystem::weakly_canonical(platform::nativePath(second), error);
    return absoluteFirst == absoluteSecond;
}

/// A file that is written must not be one that is read, nor the other one that is written.
void requireDistinctFiles(const Options& options) {
    const std::string output = "the results file '" + options.outputFile + "'";
    const std::string log = "the log file '" + options.logFile + "'";
    const auto require = [](const std::string& written, const std::string& path,
                            const std::string& other, const std::string& what,
                            const std::string& option) {
        if (!other.empty() && sameFile(path, other)) {
            throw InputError(written + " would overwrite " + what + "; choose another by " +
                             option);
        }
    };
    require(output, options.outputFile, options.model, "the FMU", "--output-file");
    require(output, options.outputFile, options.inputFile, "the input file", "--output-file");
    require(log, options.logFile, options.model, "the FMU", "--log-file");
    require(log, options.logFile, options.inputFile, "the input file", "--log-file");
    require(log, options.logFile, options.outputFile, "the results file", "--log-file");
}

} // namespace

void addOptions(CLI::App& app, Options& options) {
    app.add_option("MODEL", options.model, "The FMU, an FMI 2.0 archive for Co-Simulation")
        ->required()
        ->type_name("");
    addExperimentOptions(app, options);
    addFileOptions(app, options);
    addTaskOptions(app, options);
    app.footer(
        "Exit status: 0 after success, 1 when the FMU failed, 2 for input that cannot be used, "
        "130 when the run was ended early.");
}

void completeOptions(Options& options) {
    if (options.outputFile.empty()) {
        options.outputFile = stemOf(options.model) + ".csv";
    }
    if (options.logFile.empty()) {
        options.logFile = stemOf(options.model) + ".out";
    }
    if (!options.info.empty() && options.info != "table" && options.info != "json") {
        throw InputError("--info=" + options.info + " is not known; give --info or --info=json");
    }
    if (options.timeout && *options.timeout <= 0.0) {
        throw InputError("--timeout " + program_support::shortNumber(*options.timeout) +
                         " cannot be used; give seconds greater than 0");
    }
    if (!options.plotFile.empty()) {
        program_support::requireImageFile(options.plotFile);
    } else if (!options.plotColumns.empty()) {
        throw InputError("--plot-columns " + options.plotColumns +
                         " has no picture to go to; give --plot FILE.svg or FILE.png, too");
    }
    requireDistinctFiles(options);
}

} // namespace fmu_run
