#include "platform/files.h"
#include "platform/output_file.h"
#include "programs/cosim_host/car_model.h"
#include "programs/cosim_host/input_signals.h"
#include "programs/cosim_host/launch_options.h"
#include "programs/cosim_host/log_check.h"
#include "programs/cosim_host/partner.h"
#include "programs/cosim_host/quarter_car.h"
#include "programs/cosim_host/recorder.h"
#include "programs/cosim_host/road.h"
#include "programs/cosim_host/run_driver.h"
#include "programs/cosim_host/summary.h"
#include "programs/cosim_host/vehicle_parameters.h"
#include "programs/cosim_host/wheel_solvers.h"
#include "programs/support/call_watch.h"
#include "programs/support/csv_table.h"
#include "programs/support/distinct_files.h"
#include "programs/support/early_end.h"
#include "programs/support/exit_status.h"
#include "programs/support/input_error.h"
#include "programs/support/kept_output.h"
#include "programs/support/output_files.h"
#include "programs/support/plot.h"
#include "programs/support/progress_bar.h"
#include "programs/support/temporary_directory.h"
#include "reference_host/simulation.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace cosim_host {

namespace {

using platform::TemporaryDirectory;
using program_support::CsvTable;
using reference_host::Simulation;

TemporaryDirectory makeTemporaryDirectory() {
    return program_support::makeTemporaryDirectory("cosim_host_");
}

template <typename Parameters>
Parameters vehicleOf(const LaunchOptions& options) {
    Parameters parameters;
    if (!options.vehicleFile.empty()) {
        readVehicle(options.vehicleFile, parametersOf(parameters));
    }
    return parameters;
}

template <typename Model>
std::unique_ptr<Model> warnedAbout(std::unique_ptr<Model> model, const LaunchOptions& options) {
    const std::string warning = model->warningAbout(options.plan.stepSize);
    if (!warning.empty()) {
        std::fprintf(stderr, "cosim_host: %s\n", warning.c_str());
    }
    return model;
}

std::unique_ptr<HostModel> makeModel(Partner& partner, const LaunchOptions& options) {
    if (!options.openLoop) {
        return warnedAbout(std::make_unique<QuarterCar>(partner.addTyre(),
                                                        vehicleOf<QuarterCarParameters>(options),
                                                        makeRoad(options.road), options.speed),
                           options);
    }
    std::optional<CsvTable> table;
    if (!options.inputFile.empty()) {
        table = CsvTable::read(options.inputFile);
    }
    return std::make_unique<InputSignals>(partner.simulation(), std::move(table), options.outputs,
                                          partner.takesInputArrays());
}

void drawPlot(const LaunchOptions& options, const Recorder& recorder) {
    std::vector<std::string> names;
    for (const Signal& signal : recorder.signals()) {
        names.push_back(signal.name);
    }
    program_support::plot({options.outputFile, options.plot.file,
                           program_support::columnsToPlot(options.plot, names),
                           options.plot.title});
}

int exitStatus(RunOutcome outcome) {
    switch (outcome) {
    case RunOutcome::completed:
        return 0;
    case RunOutcome::interrupted:
        return program_support::interruptedStatus;
    case RunOutcome::failed:
        break;
    }
    return program_support::failedStatus;
}

using Partners = std::vector<Partner*>;

void requireDistinctFiles(const LaunchOptions& options, const Partners& partners) {
    const auto road = [](const std::string& name) {
        return isBuiltInRoad(name) ? std::string() : name;
    };
    std::vector<program_support::RunFile> inputs = {{options.inputFile, "the input file", ""},
                                                    {options.vehicleFile, "the vehicle file", ""},
                                                    {road(options.road), "the road", ""},
                                                    {road(options.rightRoad), "the road", ""}};
    std::vector<program_support::RunFile> outputs;
    for (const Partner* partner : partners) {
        const auto read = partner->inputs();
        const auto written = partner->outputs();
        inputs.insert(inputs.end(), read.begin(), read.end());
        outputs.insert(outputs.end(), written.begin(), written.end());
    }
    outputs.push_back({options.outputFile, "the output file", "--output-file"});
    outputs.push_back({options.plot.file, "the picture", "--plot"});
    program_support::requireDistinctFiles(inputs, outputs);
}

void requireFmus(const LaunchOptions& options, const Partners& partners) {
    if (options.solverLibrary.empty()) { // What another solver's command line names is its own.
        for (const Partner* partner : partners) {
            partner->requireFmu();
        }
    }
}

/// What an earlier run left and cannot be replaced would be taken for this run's. What a run in
/// progress has is in nobody's way: the solver takes another name.
void clearFormer(const std::filesystem::path& file, const std::string& what) {
    std::error_code unknown;
    if (std::filesystem::is_regular_file(file, unknown) && !platform::isHeld(file)) {
        program_support::clearOutputFile(platform::narrowPath(file), what, "--working-directory");
    }
}

/// Where what the solvers print is kept; empty when the user wants to see it.
std::filesystem::path keptIn(const LaunchOptions& options, const TemporaryDirectory& temporary) {
    return options.debugLogging ? std::filesystem::path() : temporary.path();
}

/// Runs a solver, or several that act as one, with what it is coupled to.
int drive(const LaunchOptions& options, Solver& solver, Simulation& simulation, HostModel& model,
          const Partners& partners, const TemporaryDirectory& temporary) {
    requireDistinctFiles(options, partners);
    requireFmus(options, partners);
    std::vector<SolverFiles*> files;
    bool parametersUsable = true;
    for (Partner* partner : partners) {
        files.push_back(&partner->files());
        parametersUsable = partner->checkParametersFiles() && parametersUsable;
    }
    const program_support::EarlyEnd earlyEnd(options.timeout);
    if (!options.outputFile.empty()) {
        program_support::clearOutputFile(options.outputFile, "output file", "--output-file");
    }
    if (!options.plot.file.empty()) {
        program_support::clearOutputFile(options.plot.file, "picture", "--plot");
    }
    // A load that ends the process must not leave what looks like this run's.
    for (const SolverFiles* each : files) {
        clearFormer(each->log, "solver's log");
        clearFormer(each->results, "solver's results");
    }
    program_support::CallWatch watch("cosim_host: the solver", options.timeout);
    watch.setTemporaryDirectory(temporary.path());
    RunPlan plan = options.plan;
    plan.files = files.size() == 1 ? files.front() : nullptr;
    plan.keptIn = keptIn(options, temporary);
    const auto watchLog = [&] {
        watch.setLog(plan.files != nullptr ? platform::narrowPath(plan.files->log) : "");
    };
    watchLog();
    const FollowedFiles followed(files, watchLog);
    Recorder recorder(model.signals(), options.outputFile);
    RunReport report = [&] {
        const program_support::KeptOutput kept(plan.keptIn);
        plan.errors = kept.error();
        program_support::ProgressBar progress(plan.errors, 0.0, plan.stopTime, !options.quiet);
        return RunDriver(solver, simulation, model, recorder, plan).run(earlyEnd, progress);
    }();
    for (const std::string& complaint : report.complaints) {
        std::cerr << complaint << '\n';
    }
    report.outcome = checkLogs(report, files, options.strict);
    if (options.strict && !parametersUsable) {
        report.outcome = RunOutcome::failed;
    }
    if (!options.plot.file.empty() && report.steps > 0) {
        drawPlot(options, recorder);
    }
    if (!options.quiet) {
        printSummary(options, report, recorder, files);
    }
    return exitStatus(report.outcome);
}

int runWithOneSolver(const LaunchOptions& options) {
    const auto temporary = makeTemporaryDirectory();
    Partner partner(options, options.commandLine, options.workingDirectory,
                    keptIn(options, temporary));
    const std::unique_ptr<HostModel> model = makeModel(partner, options);
    return drive(options, partner.solver(), partner.simulation(), *model, {&partner}, temporary);
}

std::vector<std::unique_ptr<Partner>> makeWheelPartners(const LaunchOptions& options,
                                                        const TemporaryDirectory& temporary) {
    std::vector<std::unique_ptr<Partner>> partners;
    for (std::size_t i = 0; i < wheelCount; ++i) {
        const std::string& own = options.wheelCommandLines[i];
        const std::string& commandLine = own.empty() ? options.commandLine : own;
        partners.push_back(
            std::make_unique<Partner>(options, commandLine + " -instance " + wheelNames[i],
                                      options.workingDirectory, keptIn(options, temporary)));
    }
    return partners;
}

int runWithACar(const LaunchOptions& options) {
    const auto temporary = makeTemporaryDirectory();
    const auto partners = makeWheelPartners(options, temporary);
    const auto of = [&](auto make) { return std::array{make(0), make(1), make(2), make(3)}; };
    const Tracks tracks = {makeRoad(options.road),
                           makeRoad(options.rightRoad.empty() ? options.road : options.rightRoad)};
    const auto car = warnedAbout(
        std::make_unique<CarModel>(of([&](std::size_t i) { return partners[i]->addTyre(); }),
                                   vehicleOf<CarParameters>(options), tracks, options.speed),
        options);
    WheelSolvers solvers(of([&](std::size_t i) {
        return WheelSolver{wheelNames[i], &partners[i]->solver(), &partners[i]->simulation(),
                           &partners[i]->files()};
    }));
    Partners all;
    for (const auto& partner : partners) {
        all.push_back(partner.get());
    }
    Simulation ofNoSolver; // each has its own
    return drive(options, solvers, ofNoSolver, *car, all, temporary);
}

int run(const LaunchOptions& options) {
    return options.wholeCar ? runWithACar(options) : runWithOneSolver(options);
}

int run(int argc, char** argv) {
    const auto request = readLaunchOptions(argc, argv);
    const int* status = std::get_if<int>(&request);
    return status != nullptr ? *status : run(std::get<LaunchOptions>(request));
}

} // namespace

} // namespace cosim_host

int main(int argc, char** argv) {
    return program_support::exitStatusOf("cosim_host", [&] { return cosim_host::run(argc, argv); });
}
