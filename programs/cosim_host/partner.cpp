#include "programs/cosim_host/partner.h"

#include "platform/files.h"
#include "programs/support/input_error.h"
#include "programs/support/input_files.h"
#include "programs/support/kept_output.h"
#include "reference_host/argument_list.h"
#include "run_config/parameters_file.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <system_error>

namespace cosim_host {

namespace {

std::vector<std::string> split(const std::string& commandLine) {
    reference_host::ArgumentList arguments(commandLine);
    return {arguments.values(), arguments.values() + arguments.count()};
}

/// Why the solver cannot use a parameters file; empty when it can. The solver will say again what
/// the reader says.
std::string parametersFault(const std::string& file, const std::filesystem::path& keptIn) {
    if (const auto fault = platform::readingFault(platform::nativePath(file))) {
        return fault.message();
    }
    bool isRead = false;
    {
        const program_support::KeptOutput kept(keptIn);
        run_config::FmuParameterMap parameters;
        isRead = run_config::readParametersFile(file, parameters);
    }
    if (!keptIn.empty()) {
        program_support::takeKeptMessages(keptIn);
    }
    return isRead ? "" : "it is no well-formed XML of FMUSettings, version 1.0";
}

} // namespace

Partner::Partner(const LaunchOptions& options, const std::string& commandLine,
                 const std::string& workingDirectory, const std::filesystem::path& keptIn)
    : keptIn_(keptIn),
      arguments_(split(commandLine)),
      files_(solverFiles(workingDirectory, arguments_)),
      solver_(options.solverLibrary.empty() ? defaultSolverLibrary() : options.solverLibrary,
              keptIn) {
    simulation_.setCommandLine(commandLine);
    simulation_.setWorkingDirectory(workingDirectory);
    simulation_.setModelFilePath(options.modelFile.empty() ? workingDirectory + "/cosim_host"
                                                           : options.modelFile);
    simulation_.setCoupled(!options.standalone);
    simulation_.setStepSkipOption(options.skipByOption);
    simulation_.setStepSkipParameter(options.skipByParameter);
}

void Partner::requireFmu() const {
    if (arguments_.empty()) {
        throw program_support::InputError(
            "--command-line names no FMU; begin it with the path of one");
    }
    const std::string& fmu = arguments_.front();
    const std::string withEnding = fmu + ".zip"; // An FMU may be named without it.
    std::error_code unknown;
    const bool isShort = !std::filesystem::exists(platform::nativePath(fmu), unknown) &&
                         std::filesystem::exists(platform::nativePath(withEnding), unknown);
    program_support::requireArchive(isShort ? withEnding : fmu);
}

std::vector<program_support::RunFile> Partner::inputs() const {
    std::vector<program_support::RunFile> inputs;
    if (!arguments_.empty()) {
        inputs.push_back({arguments_.front(), "the FMU", ""});
    }
    for (const std::string& file : parametersFiles()) {
        inputs.push_back({file, "the parameters file", ""});
    }
    return inputs;
}

std::vector<program_support::RunFile> Partner::outputs() const {
    constexpr const char* option = "--working-directory";
    return {{platform::narrowPath(files_.log), "the solver's log", option},
            {platform::narrowPath(files_.results), "the solver's results", option}};
}

bool Partner::checkParametersFiles() const {
    bool usable = true;
    for (const std::string& file : parametersFiles()) {
        const std::string fault = parametersFault(file, keptIn_);
        if (!fault.empty()) {
            std::cerr << "cosim_host: the parameters file '" << file
                      << "' cannot be used, the solver runs without it: " << fault
                      << "; correct it, or write one by fmu_run --write-parameters\n";
            usable = false;
        }
    }
    return usable;
}

/// As the solver finds them on its command line.
std::vector<std::string> Partner::parametersFiles() const {
    std::vector<std::string> files;
    for (std::size_t i = 1; i + 1 < arguments_.size(); ++i) {
        if (arguments_[i] == "-parameterfile" && !arguments_[i + 1].starts_with('-')) {
            files.push_back(arguments_[i + 1]);
        }
    }
    return files;
}

bool Partner::takesInputArrays() const {
    return !wasTold("-noarrayinputs");
}

TyreExchange Partner::addTyre() {
    return {simulation_, {takesInputArrays(), wasTold("-outputsarearrays")}};
}

bool Partner::wasTold(const char* option) const {
    return std::find(arguments_.begin(), arguments_.end(), option) != arguments_.end();
}

} // namespace cosim_host
