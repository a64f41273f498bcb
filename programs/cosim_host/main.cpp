#include "program_support/csv_table.h"
#include "program_support/input_error.h"
#include "program_support/interrupt.h"
#include "program_support/plot.h"
#include "program_support/progress_bar.h"
#include "reference_host/argument_list.h"
#include "reference_host/cosim_host/input_signals.h"
#include "reference_host/cosim_host/launch_options.h"
#include "reference_host/cosim_host/loaded_solver.h"
#include "reference_host/cosim_host/quarter_car.h"
#include "reference_host/cosim_host/recorder.h"
#include "reference_host/cosim_host/road.h"
#include "reference_host/cosim_host/run_driver.h"
#include "reference_host/cosim_host/solver_files.h"
#include "reference_host/cosim_host/summary.h"
#include "reference_host/simulation.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace cosim_host {

namespace {

using program_support::CsvTable;
using reference_host::Simulation;

constexpr int failedStatus = 1;

/// The solver's command line as the solver will see it.
std::vector<std::string> solverArguments(const LaunchOptions& options) {
    reference_host::ArgumentList arguments(options.commandLine);
    return {arguments.values(), arguments.values() + arguments.count()};
}

bool contains(const std::vector<std::string>& arguments, const std::string& option) {
    return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
}

void configure(Simulation& simulation, const LaunchOptions& options) {
    simulation.setCommandLine(options.commandLine);
    simulation.setWorkingDirectory(options.workingDirectory);
    simulation.setModelFilePath(options.modelFile.empty() ? options.workingDirectory + "/cosim_host"
                                                          : options.modelFile);
    simulation.setCoupled(!options.standalone);
    simulation.setStepSkipOption(options.skipByOption);
    simulation.setStepSkipParameter(options.skipByParameter);
}

std::unique_ptr<HostModel> makeModel(Simulation& simulation, const LaunchOptions& options,
                                     const std::vector<std::string>& arguments) {
    const bool inputArrays = !contains(arguments, "-noarrayinputs");
    if (!options.openLoop) {
        const bool outputArrays = contains(arguments, "-outputsarearrays");
        return std::make_unique<QuarterCar>(TyreExchange(simulation, {inputArrays, outputArrays}),
                                            makeRoad(options.road), options.speed);
    }
    std::optional<CsvTable> table;
    if (!options.inputFile.empty()) {
        table = CsvTable::read(options.inputFile);
    }
    return std::make_unique<InputSignals>(simulation, std::move(table), options.outputs,
                                          inputArrays);
}

std::vector<std::string> columnsToPlot(const LaunchOptions& options, const Recorder& recorder) {
    if (!options.plotColumns.empty()) {
        return program_support::splitColumnList(options.plotColumns);
    }
    std::vector<std::string> columns;
    for (const Signal& signal : recorder.signals()) {
        if (columns.size() < program_support::mostPlottedColumns) {
            columns.push_back(signal.name);
        }
    }
    return columns;
}

int exitStatus(RunOutcome outcome) {
    switch (outcome) {
    case RunOutcome::Completed:
        return 0;
    case RunOutcome::Interrupted:
        return program_support::interruptedStatus;
    case RunOutcome::Failed:
        break;
    }
    return failedStatus;
}

int run(const LaunchOptions& options) {
    const std::vector<std::string> arguments = solverArguments(options);
    Simulation simulation;
    configure(simulation, options);
    const std::unique_ptr<HostModel> model = makeModel(simulation, options, arguments);
    const LoadedSolver solver(options.solverLibrary.empty() ? defaultSolverLibrary()
                                                            : options.solverLibrary);
    Recorder recorder(model->signals(), options.outputFile);

    const program_support::InterruptGuard interrupts;
    program_support::ProgressBar progress(stderr, 0.0, options.plan.stopTime, !options.quiet);
    const SolverFiles files =
        solverFiles(options.workingDirectory, arguments.empty() ? "" : arguments.front());
    RunPlan plan = options.plan;
    plan.solverLog = files.log;
    const RunReport report = RunDriver(*solver, simulation, *model, recorder, plan).run(progress);
    if (!options.plotFile.empty()) {
        program_support::plot(
            {options.outputFile, options.plotFile, columnsToPlot(options, recorder)});
    }
    if (!options.quiet) {
        printSummary(options, report, recorder, files);
    }
    return exitStatus(report.outcome);
}

int complain(const std::exception& error, int status) {
    std::fprintf(stderr, "cosim_host: %s\n", error.what());
    return status;
}

} // namespace

} // namespace cosim_host

int main(int argc, char** argv) {
    try {
        const auto request = cosim_host::readLaunchOptions(argc, argv);
        if (const int* status = std::get_if<int>(&request)) {
            return *status;
        }
        return cosim_host::run(std::get<cosim_host::LaunchOptions>(request));
    } catch (const program_support::InputError& error) {
        return cosim_host::complain(error, program_support::inputErrorStatus);
    } catch (const std::exception& error) {
        return cosim_host::complain(error, cosim_host::failedStatus);
    }
}
