#include "programs/fmu_run/simulation.h"

#include "programs/fmu_run/experiment.h"
#include "programs/fmu_run/input_signals.h"
#include "programs/fmu_run/loaded_fmu.h"
#include "programs/fmu_run/run_failure.h"
#include "programs/fmu_run/shared_references.h"
#include "programs/fmu_run/variable_lookup.h"
#include "programs/support/call_watch.h"
#include "programs/support/early_end.h"
#include "programs/support/exit_status.h"
#include "programs/support/input_error.h"
#include "programs/support/input_files.h"
#include "programs/support/number_text.h"
#include "programs/support/output_files.h"
#include "programs/support/plot.h"
#include "programs/support/progress_bar.h"
#include "programs/support/run_log.h"

#include <iostream>
#include <optional>
#include <stdexcept>
#include <utility>

namespace fmu_run {

using program_support::EarlyEnd;
using program_support::InputError;
using program_support::shortNumber;
using program_support::StepGrid;

namespace {

using StartValues = std::vector<std::pair<std::string, VariableValue>>;

StartValues parseStartValues(const Options& options, const FmuDescription& model) {
    StartValues values;
    const SharedReferences references(model);
    for (const auto& [name, text] : options.startValues) {
        const auto& variable = requireVariable(model, name, "--start-value " + name);
        values.emplace_back(name, parseValue(text, variable.type, "--start-value " + name));
        references.requireOwn(variable, "--start-value " + name, options.quiet);
    }
    return values;
}

/// The runtime goes on without a file that it cannot open; a user would miss it only at the end.
/// And a load that ends the process must not leave what looks like this run's.
void clearFiles(const Options& options) {
    program_support::clearOutputFile(options.logFile, "log file", "--log-file");
    program_support::clearOutputFile(options.outputFile, "results file", "--output-file");
    if (!options.plot.file.empty()) {
        program_support::clearOutputFile(options.plot.file, "picture", "--plot");
    }
}

void initialize(LoadedFmu& fmu, const StartValues& startValues, const InputSignals& inputs,
                double startTime) {
    for (const auto& [name, value] : startValues) {
        setVariable(fmu.get(), name, value, 0.0);
    }
    if (fmu.startInitialization() != 0) {
        throw RunFailure("it could not enter its initialisation");
    }
    inputs.apply(fmu.get(), startTime);
    if (fmu.endInitialization() != 0) {
        throw RunFailure("its initialisation failed");
    }
}

void stepTo(LoadedFmu& fmu, double time) {
    constexpr std::int32_t stepRefused = -201;
    const auto status = fmu.stepTo(time);
    if (status == stepRefused) {
        throw RunFailure("its step to t = " + shortNumber(time) + " s failed");
    }
    if (status != 0) {
        throw RunFailure("its results at t = " + shortNumber(time) +
                         " s could not be read or written");
    }
}

/// @throws std::runtime_error when lines of the log were lost.
void requireCompleteLog(const Options& options) {
    if (!program_support::isLogComplete(options.logFile)) {
        throw std::runtime_error("cannot write the log file '" + options.logFile +
                                 "' to its end, the line above says why; make room there or choose "
                                 "another by --log-file");
    }
}

void reportSuccess(const Options& options, const StepGrid& grid) {
    if (!options.quiet) {
        std::cout << options.model << ": simulated from " << shortNumber(grid.startTime())
                  << " s to " << shortNumber(grid.stopTime()) << " s in " << grid.stepCount()
                  << " steps\nResults: " << options.outputFile << "\nLog: " << options.logFile
                  << '\n';
    }
}

bool hasResults(const Variable& variable) {
    return variable.type == fmi2_base_type_real && variable.causality != fmi2_causality_enu_local;
}

/// @throws InputError for a name of the user's without results.
std::vector<std::string> columnsToPlot(const Options& options, const FmuDescription& model) {
    std::vector<std::string> outputs;
    for (const auto& variable : model.variables) {
        if (hasResults(variable) && variable.causality == fmi2_causality_enu_output) {
            outputs.push_back(variable.name);
        }
    }
    auto columns = program_support::columnsToPlot(options.plot, outputs);
    for (const auto& name : columns) {
        if (!hasResults(requireVariable(model, name, "--plot-columns"))) {
            throw InputError("--plot-columns: '" + name +
                             "' has no results, only Real variables that are not local have; "
                             "choose others");
        }
    }
    return columns;
}

void drawPlot(const Options& options, const std::vector<std::string>& columns) {
    if (columns.empty()) {
        throw InputError("the FMU has no Real outputs to plot; name variables by --plot-columns");
    }
    program_support::plot({options.outputFile, options.plot.file, columns, options.plot.title});
    if (!options.quiet) {
        std::cout << "Plot: " << options.plot.file << '\n';
    }
}

/// Takes the initialised FMU over the grid, each interval with the inputs of its beginning. The time
/// at which the run ended early, if it did.
std::optional<double> runSteps(LoadedFmu& fmu, const StepGrid& grid, const InputSignals& inputs,
                               const EarlyEnd& earlyEnd, program_support::ProgressBar& progress) {
    stepTo(fmu, grid.startTime());
    for (std::int64_t step = 0; step < grid.stepCount(); ++step) {
        const double time = grid.timeAt(step);
        if (earlyEnd.isDue()) {
            return time;
        }
        inputs.apply(fmu.get(), time);
        stepTo(fmu, grid.timeAt(step + 1));
        progress.update(grid.timeAt(step + 1));
    }
    return std::nullopt;
}

/// With the reason that the FMU, FMI's status or the log gives.
RunFailure explained(const RunFailure& failure, const LoadedFmu& fmu, const Options& options) {
    const auto messages = fmu.takeMessages();
    if (messages.isRefused) {
        return RunFailure("it refused to be instantiated (fmi2Instantiate) " +
                          (messages.complaints.empty()
                               ? "without a word; ask its maker why"
                               : "and says: " + messages.complaints.back()));
    }
    show(messages.complaints);
    return RunFailure(failure.what() + messages.reason() + "; " +
                      program_support::reasonInLog(options.logFile));
}

int reportEarlyEnd(const EarlyEnd& earlyEnd, double time, const Options& options) {
    std::cerr << "fmu_run: " << earlyEnd.reason() << " at t = " << shortNumber(time)
              << " s; the results up to there are in '" << options.outputFile << "'\n";
    return program_support::interruptedStatus;
}

} // namespace

int simulate(const Options& options) {
    program_support::requireReadableFile(options.model);
    const EarlyEnd earlyEnd(options.timeout);
    program_support::CallWatch watch("fmu_run: '" + options.model + "'", options.timeout);
    const RunDirectory directory(options.workingDirectory, options.model);
    watch.setTemporaryDirectory(directory.temporary());
    const auto model = describeFmu(options.model);
    const auto grid = experimentGrid(options, model.defaultExperiment);
    const auto startValues = parseStartValues(options, model);
    const auto inputs = options.inputFile.empty()
                            ? InputSignals()
                            : InputSignals(options.inputFile, model, options.quiet);
    const auto columns =
        options.plot.file.empty() ? std::vector<std::string>() : columnsToPlot(options, model);
    clearFiles(options);
    std::optional<LoadedFmu> fmu(std::in_place, options.model, directory, options.debugLogging);
    fmiToolsEnableDebugLogs(fmu->get(), options.debugLogging ? 1 : 0);
    fmu->openFiles(options.logFile, options.outputFile);
    watch.setLog(options.logFile);
    std::optional<double> endedAt;
    try {
        const auto kept = fmu->keepOutput();
        initialize(*fmu, startValues, inputs, grid.startTime());
        program_support::ProgressBar progress(kept.error(), grid.startTime(), grid.stopTime(),
                                              !options.quiet);
        endedAt = runSteps(*fmu, grid, inputs, earlyEnd, progress);
    } catch (const RunFailure& failure) {
        throw explained(failure, *fmu, options);
    }
    const int exitStatus = endedAt ? reportEarlyEnd(earlyEnd, *endedAt, options) : 0;
    fmu.reset();
    requireCompleteLog(options);
    if (exitStatus == 0) {
        reportSuccess(options, grid);
    }
    if (!options.plot.file.empty()) {
        drawPlot(options, columns);
    }
    return exitStatus;
}

} // namespace fmu_run
