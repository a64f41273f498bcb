#include "programs/fmu_run/validation.h"

#include "platform/files.h"
#include "programs/fmu_run/fmu_description.h"
#include "programs/fmu_run/loaded_fmu.h"
#include "programs/fmu_run/shared_references.h"
#include "programs/support/call_watch.h"
#include "programs/support/exit_status.h"
#include "programs/support/input_error.h"
#include "programs/support/input_files.h"
#include "programs/support/number_text.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>

namespace fmu_run {

using program_support::InputError;
using program_support::shortNumber;

namespace {

class Findings {
  public:
    void error(const std::string& text) {
        ++errors_;
        std::cout << "error: " << text << std::endl;
    }

    void warning(const std::string& text) {
        ++warnings_;
        std::cout << "warning: " << text << std::endl;
    }

    void conclude(const std::string& model) const {
        std::cout << model << ": " << errors_ << (errors_ == 1 ? " error, " : " errors, ")
                  << warnings_ << (warnings_ == 1 ? " warning" : " warnings") << std::endl;
    }

    [[nodiscard]] int errors() const { return errors_; }

  private:
    int errors_ = 0;
    int warnings_ = 0;
};

std::optional<FmuDescription> checkDescription(const Options& options,
                                               const RunDirectory& directory, Findings& findings) {
    LibraryMessages messages;
    std::optional<FmuDescription> model;
    try {
        model = unpackFmu(options.model, directory.unpackDirectory(), &messages);
    } catch (const InputError& error) {
        findings.error(error.what());
    }
    if (model) {
        // What the library calls an error but gets over.
        messages.warnings.insert(messages.warnings.end(), messages.errors.begin(),
                                 messages.errors.end());
    }
    for (const auto& text : messages.warnings) {
        findings.warning("model description: " + text + "; correct it where the FMU is made");
    }
    return model;
}

void checkDefaultExperiment(const DefaultExperiment& experiment, Findings& findings) {
    const auto check = [&](bool usable, const std::string& name, double value,
                           const std::string& option) {
        if (!usable) {
            findings.warning("the default experiment's " + name + " " + shortNumber(value) +
                             " cannot be used; give " + option + " at each run");
        }
    };
    check(experiment.startTime >= 0.0 && std::isfinite(experiment.startTime), "start time",
          experiment.startTime, "--start-time");
    check(experiment.stopTime >= experiment.startTime && std::isfinite(experiment.stopTime),
          "stop time", experiment.stopTime, "--stop-time");
    constexpr double mostSteps = 1e9;
    const double length = experiment.stopTime - experiment.startTime;
    check(experiment.stepSize > 0.0 && std::isfinite(experiment.stepSize) &&
              !(length / experiment.stepSize > mostSteps),
          "step size", experiment.stepSize, "--output-interval");
}

void checkNames(std::vector<Variable> variables, Findings& findings) {
    const auto before = [](const Variable& a, const Variable& b) { return a.name < b.name; };
    const auto same = [](const Variable& a, const Variable& b) { return a.name == b.name; };
    std::sort(variables.begin(), variables.end(), before);
    auto found = std::adjacent_find(variables.begin(), variables.end(), same);
    while (found != variables.end()) {
        findings.error("two variables are called '" + found->name +
                       "', only one of them can be set and read; rename one where the FMU is made");
        found = std::adjacent_find(found + 1, variables.end(), same);
    }
}

void checkBooleans(const FmuDescription& model, Findings& findings) {
    const SharedReferences references(model);
    for (const auto& variable : model.variables) {
        const bool canBeSet = variable.causality == fmi2_causality_enu_parameter ||
                              variable.causality == fmi2_causality_enu_input;
        const auto* other = references.setInsteadOf(variable);
        if (canBeSet && other != nullptr) {
            findings.warning("the Boolean '" + variable.name + "' has the value reference of '" +
                             other->name +
                             "', which would be set instead; give Booleans value "
                             "references of their own where the FMU is made");
        }
    }
}

/// The FMU's and the runtime's complaints in the log.
void reportLog(const std::string& logFile, Findings& findings) {
    std::ifstream stream(platform::nativePath(logFile));
    for (std::string line; std::getline(stream, line);) {
        for (const std::string_view level :
             {"][Warning] ", "][Discard] ", "][Error] ", "][Fatal] "}) {
            if (line.find(level) != std::string::npos) {
                findings.warning("the log says " + line + "; ask the FMU's maker what it means");
            }
        }
    }
}

/// What is wrong with the initialisation and the first step; empty when nothing is.
std::string firstStepProblem(LoadedFmu& fmu, double step) {
    const auto kept = fmu.keepOutput();
    if (fmu.startInitialization() != 0 || fmu.endInitialization() != 0) {
        return "the FMU cannot be initialised with its start values" + fmu.takeMessages().reason() +
               "; set those it needs by --start-value and see the log of that run";
    }
    if (fmu.stepTo(step) != 0) {
        return "the first step, to t = " + shortNumber(step) + " s, failed" +
               fmu.takeMessages().reason() +
               "; try a smaller --output-interval and see the log of that run";
    }
    return {};
}

void checkFirstStep(LoadedFmu& fmu, const FmuDescription& model, Findings& findings) {
    const double wanted = model.defaultExperiment.stepSize;
    const double step = wanted > 0.0 && std::isfinite(wanted) ? wanted : 0.001;
    const auto problem = firstStepProblem(fmu, step);
    if (!problem.empty()) {
        findings.error(problem);
    }
}

void checkRun(const Options& options, const RunDirectory& directory, const FmuDescription& model,
              Findings& findings) {
    const auto logFile = directory.temporaryFile("log");
    try {
        LoadedFmu fmu(options.model, directory, options.debugLogging);
        fmiToolsSetLogFile(fmu.get(), logFile.c_str());
        fmiToolsSetResultsFile(fmu.get(), directory.temporaryFile("results").c_str());
        checkFirstStep(fmu, model, findings);
    } catch (const InputError& error) {
        findings.error(error.what());
    }
    reportLog(logFile, findings);
}

} // namespace

int validate(const Options& options) {
    program_support::requireReadableFile(options.model);
    program_support::CallWatch watch("fmu_run: '" + options.model + "'", options.timeout);
    const RunDirectory directory;
    watch.setTemporaryDirectory(directory.temporary());
    Findings findings;
    if (const auto model = checkDescription(options, directory, findings)) {
        checkDefaultExperiment(model->defaultExperiment, findings);
        checkNames(model->variables, findings);
        checkBooleans(*model, findings);
        checkRun(options, directory, *model, findings);
    }
    findings.conclude(options.model);
    return findings.errors() > 0 ? program_support::failedStatus : 0;
}

} // namespace fmu_run
