#include "programs/cosim_host/launch_options.h"

#include "programs/cosim_host/car_model.h"
#include "programs/cosim_host/road.h"
#include "programs/support/command_line.h"
#include "programs/support/exit_status.h"
#include "programs/support/input_error.h"
#include "programs/support/number_text.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace cosim_host {

using program_support::addNumberOption;
using program_support::addTextOption;
using program_support::InputError;
using program_support::requirePositive;

namespace {

/// Options as they are given, before they were looked at closely.
struct GivenOptions {
    std::optional<double> stepSize;
    std::optional<double> stopTime;
    std::optional<double> speed;
    std::vector<std::string> skip;
    std::vector<std::string> outputs;
    std::string vehicle = "quarter";
    std::vector<std::string> wheels;
};

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

/// Takes WHEEL=TEXT apart.
void takeWheel(const std::string& request, PerWheelText& commandLines) {
    const std::string wheel = request.substr(0, request.find('='));
    const auto found = std::find(wheelNames.begin(), wheelNames.end(), wheel);
    if (found == wheelNames.end() || wheel.size() == request.size()) {
        throw InputError("--wheel '" + request +
                         "' names no wheel; give frontLeft=TEXT, frontRight=TEXT, rearLeft=TEXT or "
                         "rearRight=TEXT");
    }
    commandLines[static_cast<std::size_t>(found - wheelNames.begin())] =
        request.substr(wheel.size() + 1);
}

void completeVehicle(LaunchOptions& options, const GivenOptions& given) {
    options.wholeCar = given.vehicle == "car";
    for (const std::string& request : given.wheels) {
        takeWheel(request, options.wheelCommandLines);
    }
    if (!options.wholeCar && (!given.wheels.empty() || !options.rightRoad.empty())) {
        throw InputError("--wheel and --right-road are for a car; give --vehicle car, too");
    }
    if (options.wholeCar && (options.openLoop || options.plan.keepGoing)) {
        throw InputError(
            "--vehicle car goes neither with inputs from a file nor with --keep-going; "
            "leave one of them out");
    }
}

RunPlan completePlan(const GivenOptions& given, RunPlan plan) {
    using program_support::shortNumber;
    requirePositive(given.stepSize, "--step-size");
    requirePositive(given.stopTime, "--stop-time");
    plan.stepSize = given.stepSize.value_or(plan.stepSize);
    plan.stopTime = given.stopTime.value_or(plan.stopTime);
    constexpr double mostSteps = 1e9;
    if (plan.stopTime / plan.stepSize > mostSteps) {
        throw InputError("--step-size " + shortNumber(plan.stepSize) +
                         " makes more than 1e9 steps up to --stop-time " +
                         shortNumber(plan.stopTime) + "; give a larger one");
    }
    return plan;
}

void checkPlot(const LaunchOptions& options) {
    program_support::checkPlotOptions(options.plot);
    if (!options.plot.file.empty() && options.outputFile.empty()) {
        throw InputError("--plot " + options.plot.file +
                         " draws what --output-file keeps; give that, too");
    }
}

void complete(LaunchOptions& options, const GivenOptions& given) {
    options.plan = completePlan(given, options.plan);
    requirePositive(given.speed, "--speed");
    requirePositive(options.timeout, "--timeout");
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
    completeVehicle(options, given);
}

void addSolverOptions(CLI::App& app, LaunchOptions& options, GivenOptions& given) {
    addTextOption(app, "--command-line", options.commandLine, "TEXT",
                  "The solver's own command line, as one argument: the FMU, then its options")
        ->required();
    addTextOption(app, "--solver", options.solverLibrary, "FILE",
                  "The library that makes the solver (default: the fmi_solver of this program)");
    addTextOption(app, "--working-directory", options.workingDirectory, "DIRECTORY",
                  "Where the FMU is unpacked and log and results are written (default: the current "
                  "directory)");
    addTextOption(app, "--model-file", options.modelFile, "FILE",
                  "The host's model file; a folder FMITools beside it may hold the FMU's clean-up "
                  "script (default: a name in the working directory)");
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
    program_support::addTimeoutOption(app, options.timeout);
    app.add_flag("--keep-going", options.plan.keepGoing,
                 "Go on after a failure code; the run counts as failed all the same");
    app.add_flag("--strict", options.strict,
                 "Count the run as failed when the solver's log has warnings or errors");
    addTextOption(app, "--output-file", options.outputFile, "CSV",
                  "What the host received, a row for each communication point");
    program_support::addPlotOptions(
        app, options.plot, "columns of the output file",
        "Names of the columns to draw, separated by commas (default: the first ones)");
    app.add_flag("--debug-logging", options.debugLogging,
                 "Show what the solver, its FMU and their libraries print");
    app.add_flag("-q,--quiet", options.quiet, "No progress bar and no summary");
}

void addModelOptions(CLI::App& app, LaunchOptions& options, GivenOptions& given) {
    app.add_option("--vehicle", given.vehicle,
                   "A quarter of a car on one tyre, or a car on four, each with a solver that runs "
                   "as the instance of the wheel's name (default: quarter)")
        ->type_name("quarter|car")
        ->check([](const std::string& vehicle) {
            return vehicle == "quarter" || vehicle == "car"
                       ? std::string()
                       : "'" + vehicle + "' is not known; give quarter or car";
        });
    app.add_option("--wheel", given.wheels,
                   "The solver's command line for one wheel of the car, frontLeft, frontRight, "
                   "rearLeft or rearRight, where it is another one; can be given for each")
        ->type_name("WHEEL=TEXT")
        ->allow_extra_args(false);
    addTextOption(app, "--road", options.road, "flat|step|sine|CSV",
                  std::string("Road of the vehicle: ") + roadDescription + " (default: step)");
    addTextOption(app, "--right-road", options.rightRoad, "flat|step|sine|CSV",
                  "Road under the right wheels of the car (default: as --road)");
    addNumberOption(app, "--speed", given.speed, "METRES/SECOND",
                    "Speed of the vehicle (default: 20)");
    app.add_option("--vehicle-file", options.vehicleFile,
                   "Masses, springs, dampers and tyre of the vehicle, in lines 'name = value unit' "
                   "(default: a middle-sized car)")
        ->type_name("FILE");
    app.add_flag("--open-loop", options.openLoop,
                 "No vehicle; --input-file and --output say so, too");
    addTextOption(
        app, "--input-file", options.inputFile, "CSV",
        "The coupled conditions over time: the first column is the time, each other one is named "
        "as the solver's input, and values between the rows lie on straight lines");
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
        "the solver's tyre carries, with a whole car, or with inputs from a file.");
    LaunchOptions options;
    GivenOptions given;
    addSolverOptions(app, options, given);
    addRunOptions(app, options, given);
    addModelOptions(app, options, given);
    app.footer(program_support::exitStatusHelp("the simulation"));
    if (const std::optional<int> status = program_support::readCommandLine(app, argc, argv)) {
        return *status;
    }
    complete(options, given);
    return options;
}

} // namespace cosim_host
