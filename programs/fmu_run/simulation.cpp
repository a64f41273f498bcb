#include "fmu_run/simulation.h"

#include "fmu_run/experiment.h"
#include "fmu_run/input_signals.h"
#include "fmu_run/loaded_fmu.h"
#include "platform/files.h"
#include "program_support/input_error.h"
#include "program_support/interrupt.h"
#include "program_support/number_text.h"
#include "program_support/plot.h"
#include "program_support/progress_bar.h"

#include <chrono>
#include <fstream>
#include <iostream>

namespace fmu_run {

using program_support::InputError;
using program_support::shortNumber;

namespace {

using Clock = std::chrono::steady_clock;
using StartValues = std::vector<std::pair<std::string, VariableValue>>;

StartValues parseStartValues(const Options& options, const ModelInformation& model) {
    StartValues values;
    for (const auto& [name, text] : options.startValues) {
        const auto& variable = requireVariable(model, name, "--start-value " + name);
        values.emplace_back(name, parseValue(text, variable.type, "--start-value " + name));
    }
    return values;
}

/// The runtime goes on without a file that it cannot open; a user would miss it only at the end.
void requireWritable(const std::string& path, const std::string& what, const std::string& option) {
    const auto file = platform::nativePath(path);
    std::error_code error;
    const bool existed = std::filesystem::exists(file, error);
    if (!std::ofstream(file, std::ios::app)) {
        throw InputError("cannot write the " + what + " '" + path + "'; choose another by " +
                         option);
    }
    if (!existed) {
        std::filesystem::remove(file, error);
    }
}

void openFiles(FmiToolsInstance* fmu, const Options& options) {
    requireWritable(options.logFile, "log file", "--log-file");
    requireWritable(options.outputFile, "results file", "--output-file");
    fmiToolsSetLogFile(fmu, options.logFile.c_str());
    fmiToolsEnableDebugLogs(fmu, options.debugLogging ? 1 : 0);
    fmiToolsSetResultsFile(fmu, options.outputFile.c_str());
}

void initialize(const LoadedFmu& fmu, const StartValues& startValues, const InputSignals& inputs,
                double startTime) {
    for (const auto& [name, value] : startValues) {
        setVariable(fmu.get(), name, value);
    }
    if (fmu.startInitialization() != 0) {
        throw RunFailure("it could not enter its initialisation");
    }
    inputs.apply(fmu.get(), startTime);
    if (fmu.endInitialization() != 0) {
        throw RunFailure("its initialisation failed");
    }
}

void stepTo(FmiToolsInstance* fmu, double time) {
    constexpr std::int32_t stepRefused = -201;
    const auto status = fmiToolsSimulateToT(fmu, time);
    if (status == stepRefused) {
        throw RunFailure("its step to t = " + shortNumber(time) + " s failed");
    }
    if (status != 0) {
        throw RunFailure("its values at t = " + shortNumber(time) + " s could not be read");
    }
}

/// Why a run ended before the stop time; empty while it goes on.
class EarlyEnd {
  public:
    explicit EarlyEnd(const std::optional<double>& timeout) : timeout_(timeout) {}

    [[nodiscard]] std::string reason() const {
        if (program_support::interrupted()) {
            return "interrupted";
        }
        const std::chrono::duration<double> elapsed = Clock::now() - begin_;
        if (timeout_ && elapsed.count() >= *timeout_) {
            return "stopped after --timeout " + shortNumber(*timeout_) + " s";
        }
        return {};
    }

  private:
    std::optional<double> timeout_;
    Clock::time_point begin_ = Clock::now();
    program_support::InterruptGuard guard_;
};

void reportSuccess(const Options& options, const Experiment& experiment) {
    if (!options.quiet) {
        std::cout << options.model << ": simulated from " << shortNumber(experiment.startTime())
                  << " s to " << shortNumber(experiment.stopTime()) << " s in "
                  << experiment.stepCount() << " steps\nResults: " << options.outputFile
                  << "\nLog: " << options.logFile << '\n';
    }
}

bool hasResults(const Variable& variable) {
    return variable.type == VariableType::Real && variable.causality != "local";
}

/// The columns that the user chose, else the first outputs. Throws InputError for a name without
/// results.
std::vector<std::string> columnsToPlot(const Options& options, const ModelInformation& model) {
    std::vector<std::string> columns;
    if (options.plotColumns.empty()) {
        for (const auto& variable : model.variables) {
            if (hasResults(variable) && variable.causality == "output" &&
                columns.size() < program_support::mostPlottedColumns) {
                columns.push_back(variable.name);
            }
        }
    } else {
        columns = program_support::splitColumnList(options.plotColumns);
    }
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
    program_support::plot({options.outputFile, options.plotFile, columns});
    if (!options.quiet) {
        std::cout << "Plot: " << options.plotFile << '\n';
    }
}

/// Takes the initialised FMU over the grid, each interval with the inputs of its beginning. Returns
/// the exit status.
int runSteps(FmiToolsInstance* fmu, const Experiment& experiment, const InputSignals& inputs,
             const EarlyEnd& earlyEnd, const Options& options) {
    program_support::ProgressBar progress(stderr, experiment.startTime(), experiment.stopTime(),
                                          !options.quiet);
    stepTo(fmu, experiment.startTime());
    for (std::int64_t step = 0; step < experiment.stepCount(); ++step) {
        const double time = experiment.timeAt(step);
        if (const auto reason = earlyEnd.reason(); !reason.empty()) {
            progress.finish();
            std::cerr << "fmu_run: " << reason << " at t = " << shortNumber(time)
                      << " s; the results up to there are in '" << options.outputFile << "'\n";
            return program_support::interruptedStatus;
        }
        inputs.apply(fmu, time);
        stepTo(fmu, experiment.timeAt(step + 1));
        progress.update(experiment.timeAt(step + 1));
    }
    progress.finish();
    reportSuccess(options, experiment);
    return 0;
}

} // namespace

int simulate(const Options& options) {
    requireFile(options.model);
    const RunDirectory directory(options.workingDirectory);
    const EarlyEnd earlyEnd(options.timeout);
    const LoadedFmu fmu(options.model, directory, options.debugLogging);
    const auto model = readModelInformation(directory.unpackDirectory());
    const Experiment experiment(options, model.defaultExperiment);
    const auto startValues = parseStartValues(options, model);
    const auto inputs =
        options.inputFile.empty() ? InputSignals() : InputSignals(options.inputFile, model);
    const auto columns =
        options.plotFile.empty() ? std::vector<std::string>() : columnsToPlot(options, model);
    openFiles(fmu.get(), options);
    initialize(fmu, startValues, inputs, experiment.startTime());
    const int exitStatus = runSteps(fmu.get(), experiment, inputs, earlyEnd, options);
    if (!options.plotFile.empty()) {
        drawPlot(options, columns);
    }
    return exitStatus;
}

} // namespace fmu_run
