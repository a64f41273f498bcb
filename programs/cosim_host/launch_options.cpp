#include "reference_host/cosim_host/launch_options.h"

#include "program_support/command_line.h"
#include "program_support/input_error.h"
#include "program_support/number_text.h"
#include "program_support/plot.h"
#include "reference_host/cosim_host/road.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace cosim_host {

using program_support::addNumberOption;
using program_support::InputError;

namespace {

/// Options as they are given, before they were looked at closely.
struct GivenOptions {
    std::optional<double> stepSize;
    std::optional<double> stopTime;
    std::optional<double> timeout;
    std::optional<double> speed;
    std::vector<std::string> skip;
    std::vector<std::string> outputs;
};

void requirePositive(const std::optional<double>& value, const std::string& option) {
    if (value && *value <= 0.0) {
        throw InputError(option + " is " + program_support::shortNumber(*value) +
                         "; give a number above 0");
    }
}

int parseSize(const std::string& text, const std::string& request) {
    if (text != "1" && text != "2" && text != "3") {
        throw InputError("the size in --output " + request + " is '" + text + "'; give 1, 2 or 3");
    }
    return text.front() - '0';
}

/// Takes NAME[:QUANTITY[:SIZE]] apart.
OutputRequest parseOutput(const std::string& request) {
    const std::size_t nameEnd = request.find(':');
    OutputRequest output{request.substr(0, nameEnd), "", 1};
    if (output.name.empty()) {
        throw InputError("--output '" + request + "' has no name; give NAME[:QUANTITY[:SIZE]]");
    }
    if (nameEnd == std::string::npos) {
        return output;
    }
    const std::size_t quantityEnd = request.find(':', nameEnd + 1);
    output.quantity = request.substr(nameEnd + 1, quantityEnd - nameEnd - 1);
    if (quantityEnd != std::string::npos) {
        output.size = parseSize(request.substr(quantityEnd + 1), request);
    }
    return output;
}

RunPlan completePlan(const GivenOptions& given, RunPlan plan) {
    using program_support::shortNumber;
    requirePositive(given.stepSize, "--step-size");
    requirePositive(given.stopTime, "--stop-time");
    requirePositive(given.timeout, "--timeout");
    plan.stepSize = given.stepSize.value_or(plan.stepSize);
    plan.stopTime = given.stopTime.value_or(plan.stopTime);
    plan.timeout = given.timeout;
    constexpr double mostSteps = 1e9;
    if (plan.stopTime / plan.stepSize > mostSteps) {
        throw InputError("--step-size " + shortNumber(plan.stepSize) +
                         " makes more than 1e9 steps up to --stop-time " +
                         shortNumber(plan.stopTime) + "; give a larger one");
    }
    return plan;
}

void checkPlot(const LaunchOptions& options) {
    if (options.plotFile.empty()) {
        if (!options.plotColumns.empty()) {
            throw InputError("--plot-columns " + options.plotColumns +
                             " has no picture to go to; give --plot FILE.svg or FILE.png, too");
        }
        return;
    }
    program_support::requireImageFile(options.plotFile);
    if (options.outputFile.empty()) {
        throw InputError("--plot " + options.plotFile +
                         " draws what --output-file keeps; give that, too");
    }
}

void complete(LaunchOptions& options, const GivenOptions& given) {
    options.plan = completePlan(given, options.plan);
    requirePositive(given.speed, "--speed");
    options.speed = given.speed.value_or(options.speed);
    const auto skips = [&](std::string_view how) {
        return std::find(given.skip.begin(), given.skip.end(), how) != given.skip.end();
    };
    options.skipByOption = skips("option");
    options.skipByParameter = skips("parameter");
    for (const std::string& request : given.outputs) {
        options.outputs.push_back(parseOutput(request));
    }
    checkPlot(options);
    options.openLoop = options.openLoop || !options.inputFile.empty() || !options.outputs.empty();
}

void addSolverOptions(CLI::App& app, LaunchOptions& options, GivenOptions& given) {
    app.add_option("--command-line", options.commandLine,
                   "The solver's own command line, as one argument: the FMU, then its options")
        ->type_name("TEXT")
        ->required();
    app.add_option("--solver", options.solverLibrary,
                   "The library that makes the solver (default: the fmi_solver of this program)")
        ->type_name("FILE");
    app.add_option(
           "--working-directory", options.workingDirectory,
           "Where the FMU is unpacked and log and results are written (default: the current "
           "directory)")
        ->type_name("DIRECTORY");
    app.add_option("--model-file", options.modelFile,
                   "The host's model file; a folder FMITools beside it may hold the FMU's clean-up "
                   "script (default: a name in the working directory)")
        ->type_name("FILE");
    app.add_flag("--standalone", options.standalone,
                 "Tell the solver that it runs alone instead of coupled to others");
    app.add_option("--skip", given.skip,
                   "Switch the solver's step operations off, by the host's option or by its "
                   "parameter; can be given twice")
        ->type_name("option|parameter")
        ->allow_extra_args(false)
        ->check([](const std::string& how) {
            return how == "option" || how == "parameter"
                       ? std::string()
                       : "'" + how + "' is not known; give option or parameter";
        });
}

void addRunOptions(CLI::App& app, LaunchOptions& options, GivenOptions& given) {
    addNumberOption(app, "--step-size", given.stepSize, "SECONDS",
                    "Communication step (default: 0.001)");
    addNumberOption(app, "--stop-time", given.stopTime, "SECONDS",
                    "Where the simulation ends (default: 16)");
    addNumberOption(app, "--timeout", given.timeout, "SECONDS",
                    "End after that time of the clock, between two steps");
    app.add_flag("--keep-going", options.plan.keepGoing,
                 "Go on after a failure code; the run counts as failed all the same");
    app.add_option("--output-file", options.outputFile,
                   "What the host received, a row for each communication point")
        ->type_name("CSV");
    app.add_option("--plot", options.plotFile,
                   "Draw columns of the output file over time into a picture, FILE.svg or FILE.png "
                   "(needs gnuplot)")
        ->type_name("FILE");
    app.add_option("--plot-columns", options.plotColumns,
                   "Names of the columns to draw, separated by commas (default: the first ones)")
        ->type_name("NAMES");
    app.add_flag("-q,--quiet", options.quiet, "No progress bar and no summary");
}

void addModelOptions(CLI::App& app, LaunchOptions& options, GivenOptions& given) {
    app.add_option("--road", options.road,
                   std::string("Road of the quarter car: ") + roadDescription + " (default: step)")
        ->type_name("flat|step|sine|CSV");
    addNumberOption(app, "--speed", given.speed, "METRES/SECOND",
                    "Speed of the quarter car (default: 20)");
    app.add_flag("--open-loop", options.openLoop,
                 "No quarter car; --input-file and --output say so, too");
    app.add_option(
           "--input-file", options.inputFile,
           "The coupled conditions over time: the first column is the time, each other one is "
           "named as the solver's input, and values between the rows lie on straight lines")
        ->type_name("CSV");
    app.add_option("--output", given.outputs,
                   "An output result; can be given again and again. With -outputsarearrays on the "
                   "solver's command line a vector has size 3")
        ->type_name("NAME[:QUANTITY[:SIZE]]")
        ->allow_extra_args(false);
}

} // namespace

std::variant<LaunchOptions, int> readLaunchOptions(int argc, char** argv) {
    CLI::App app;
    program_support::beginCommandLine(
        app, "cosim_host",
        "Loads a co-simulation solver and runs it as a host does: with a quarter car whose wheel "
        "the solver's tyre carries, or with inputs from a file.");
    LaunchOptions options;
    GivenOptions given;
    addSolverOptions(app, options, given);
    addRunOptions(app, options, given);
    addModelOptions(app, options, given);
    app.footer(
        "Exit status: 0 after success, 1 when the simulation failed, 2 for input that cannot be "
        "used, 130 when the run was ended early.");
    if (const std::optional<int> status = program_support::readCommandLine(app, argc, argv)) {
        return *status;
    }
    complete(options, given);
    return options;
}

} // namespace cosim_host
