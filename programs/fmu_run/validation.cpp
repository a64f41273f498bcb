#include "programs/fmu_run/validation.h"

#include "platform/files.h"
#include "platform/shared_library.h"
#include "programs/fmu_run/described_model.h"
#include "programs/fmu_run/description_findings.h"
#include "programs/fmu_run/fmu_description.h"
#include "programs/fmu_run/loaded_fmu.h"
#include "programs/support/call_watch.h"
#include "programs/support/exit_status.h"
#include "programs/support/input_error.h"
#include "programs/support/input_files.h"
#include "programs/support/number_text.h"

#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>
#include <system_error>

namespace fmu_run {

using program_support::ForeignCall;
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

    /// Counts findings that are too many to be said.
    void addUnsaid(std::size_t errors, std::size_t warnings) {
        errors_ += errors;
        warnings_ += warnings;
        if (errors + warnings > 0) {
            std::cout << "and " << errors + warnings << " more of this kind" << std::endl;
        }
    }

    [[nodiscard]] std::size_t errors() const { return errors_; }

  private:
    std::size_t errors_ = 0;
    std::size_t warnings_ = 0;
};

/// Unpacks the FMU and has the import library read its model description; the default experiment
/// if that can be used. Nothing else is kept: it would be a third copy of the text in memory.
std::optional<DefaultExperiment>
checkDescription(const Options& options, const RunDirectory& directory, Findings& findings) {
    LibraryMessages messages;
    std::optional<DefaultExperiment> experiment;
    try {
        experiment =
            unpackFmu(options.model, directory.unpackDirectory(), &messages).defaultExperiment;
    } catch (const InputError& error) {
        findings.error(error.what());
    }
    std::vector<std::string> said = messages.warnings;
    if (experiment) {
        // What the library calls an error but gets over.
        said.insert(said.end(), messages.errors.begin(), messages.errors.end());
    }
    for (const auto& text : said) {
        findings.warning("model description: " + text + "; correct it where the FMU is made");
    }
    findings.addUnsaid(0, messages.dropped);
    return experiment;
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

/// Says what the model description has wrong, as far as it can be read. Its model identifier; empty
/// when there is none.
std::string checkDocument(const std::string& unpackDirectory, Findings& findings) {
    const auto model = readDescribedModel(fmi_import::modelDescriptionPath(unpackDirectory));
    if (!model) {
        return {};
    }
    const DescriptionFindings found = findingsIn(*model);
    const auto listed = found.sorted();
    std::size_t warnings = 0;
    for (const auto& [line, text, isWarning] : listed) {
        const std::string place = "line " + std::to_string(line) + " of modelDescription.xml: ";
        if (isWarning) {
            ++warnings;
            findings.warning(place + text +
                             "; give Booleans value references of their own where the FMU is made");
        } else {
            findings.error(place + text + "; correct it where the FMU is made");
        }
    }
    findings.addUnsaid(found.errors() - (listed.size() - warnings), found.warnings() - warnings);
    return model->identifier != nullptr ? model->identifier : "";
}

/// Functions that the library of every slave must have, also those whose ability it does not offer
/// (FMI 2.0 sections 2.1 and 4.2).
constexpr std::array slaveFunctions{"fmi2GetTypesPlatform",
                                    "fmi2GetVersion",
                                    "fmi2SetDebugLogging",
                                    "fmi2Instantiate",
                                    "fmi2FreeInstance",
                                    "fmi2SetupExperiment",
                                    "fmi2EnterInitializationMode",
                                    "fmi2ExitInitializationMode",
                                    "fmi2Terminate",
                                    "fmi2Reset",
                                    "fmi2GetReal",
                                    "fmi2GetInteger",
                                    "fmi2GetBoolean",
                                    "fmi2GetString",
                                    "fmi2SetReal",
                                    "fmi2SetInteger",
                                    "fmi2SetBoolean",
                                    "fmi2SetString",
                                    "fmi2GetFMUstate",
                                    "fmi2SetFMUstate",
                                    "fmi2FreeFMUstate",
                                    "fmi2SerializedFMUstateSize",
                                    "fmi2SerializeFMUstate",
                                    "fmi2DeSerializeFMUstate",
                                    "fmi2GetDirectionalDerivative",
                                    "fmi2SetRealInputDerivatives",
                                    "fmi2GetRealOutputDerivatives",
                                    "fmi2DoStep",
                                    "fmi2CancelStep",
                                    "fmi2GetStatus",
                                    "fmi2GetRealStatus",
                                    "fmi2GetIntegerStatus",
                                    "fmi2GetBooleanStatus",
                                    "fmi2GetStringStatus"};

/// True when a file can be called so: the identifier must not lead to another library.
bool isPlainName(std::string_view identifier) {
    constexpr std::string_view allowed =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
    return !identifier.empty() && identifier.find_first_not_of(allowed) == std::string_view::npos;
}

/// Looks for the functions of the library; that it does not load at all is said where it is run.
void checkFunctions(const std::string& unpackDirectory, std::string_view identifier,
                    Findings& findings) {
    using platform::SharedLibrary;
    if (!isPlainName(identifier)) {
        return;
    }
    const auto file = platform::nativePath(unpackDirectory) / "binaries" /
                      SharedLibrary::fmiPlatform() /
                      (std::string(identifier) + SharedLibrary::suffix());
    std::error_code error;
    const ForeignCall call("its library's loading", 0.0);
    SharedLibrary library;
    if (!library.open(platform::narrowPath(std::filesystem::absolute(file, error)))) {
        return;
    }
    for (const char* function : slaveFunctions) {
        if (library.symbol(function) == nullptr) {
            findings.error(std::string("its library for ") + SharedLibrary::fmiPlatform() +
                           " has no function " + function +
                           ", which FMI 2.0 requires; export the FMU with all functions");
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

void checkFirstStep(LoadedFmu& fmu, const DefaultExperiment& experiment, Findings& findings) {
    const double wanted = experiment.stepSize;
    const double step = wanted > 0.0 && std::isfinite(wanted) ? wanted : 0.001;
    const auto problem = firstStepProblem(fmu, step);
    if (!problem.empty()) {
        findings.error(problem);
    }
}

void checkRun(const Options& options, const RunDirectory& directory,
              const DefaultExperiment& experiment, Findings& findings) {
    const auto logFile = directory.temporaryFile("log");
    try {
        LoadedFmu fmu(options.model, directory, options.debugLogging);
        fmiToolsSetLogFile(fmu.get(), logFile.c_str());
        fmiToolsSetResultsFile(fmu.get(), directory.temporaryFile("results").c_str());
        checkFirstStep(fmu, experiment, findings);
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
    const auto experiment = checkDescription(options, directory, findings);
    const std::string identifier = checkDocument(directory.unpackDirectory(), findings);
    if (experiment) {
        checkDefaultExperiment(*experiment, findings);
        checkFunctions(directory.unpackDirectory(), identifier, findings);
        checkRun(options, directory, *experiment, findings);
    }
    findings.conclude(options.model);
    return findings.errors() > 0 ? program_support::failedStatus : 0;
}

} // namespace fmu_run
