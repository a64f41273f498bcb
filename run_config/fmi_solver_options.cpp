#include "run_config/fmi_solver_options.h"

#include "platform/file_names.h"
#include "run_config/console.h"
#include "run_config/parameters_file.h"

#include <stdexcept>

namespace run_config {

namespace {

constexpr std::string_view parameterFileOption = "-parameterfile";

std::vector<std::string_view> tokensOf(int argc, char** argv) {
    std::vector<std::string_view> tokens;
    tokens.reserve(static_cast<std::size_t>(argc));
    for (int i = 0; i < argc; ++i) {
        tokens.emplace_back(argv[i] == nullptr ? "" : argv[i]);
    }
    return tokens;
}

/// True when the token after `index` is there and can be an argument.
bool hasArgument(const std::vector<std::string_view>& tokens, std::size_t index) {
    return index + 1 < tokens.size() && !tokens[index + 1].starts_with('-');
}

/// True when any "-parameterfile" has a path: it then overrides every "-parameter", also those
/// before it.
bool namesParameterFile(const std::vector<std::string_view>& tokens) {
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i] == parameterFileOption && hasArgument(tokens, i)) {
            return true;
        }
    }
    return false;
}

} // namespace

int FmiSolverOptions::parseArguments(int argc, char** argv) {
    if (argc <= 0) {
        throw std::runtime_error("FMISolver - Incorrect number of command line arguments");
    }
    const auto tokens = tokensOf(argc, argv);
    fmuPath_ = tokens.front();
    if (tokens.size() == 1) {
        return 0;
    }
    const bool fileGiven = namesParameterFile(tokens);
    // Every token is examined, the first and the arguments of other options included: an option word
    // acts wherever it stands.
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        applyOption(tokens, i, fileGiven);
    }
    return 0;
}

bool FmiSolverOptions::readParametersFile(const std::string& path) {
    return run_config::readParametersFile(path, parameters_);
}

void FmiSolverOptions::applyOption(const Tokens& tokens, std::size_t index, bool fileGiven) {
    const auto option = tokens[index];
    if (option == "-nolocal") {
        includeLocal_ = false;
    } else if (option == "-noarrayinputs") {
        arrayInputs_ = false;
    } else if (option == "-outputsarearrays") {
        outputsAreArrays_ = true;
    } else if (option == "-fmutype") {
        applyFmuType(tokens, index);
    } else if (option == "-parameter") {
        applyParameter(tokens, index, fileGiven);
    } else if (option == "-instance") {
        applyInstance(tokens, index);
    } else if (option == parameterFileOption) {
        applyParameterFile(tokens, index);
    }
}

void FmiSolverOptions::applyFmuType(const Tokens& tokens, std::size_t index) {
    if (hasArgument(tokens, index)) {
        fmuType_ = tokens[index + 1];
    }
}

// Not in the folder of the clean-up scripts either, where the FMU could bring one of its own.
void FmiSolverOptions::applyInstance(const Tokens& tokens, std::size_t index) {
    if (!hasArgument(tokens, index)) {
        return;
    }
    const auto name = tokens[index + 1];
    auto fault = platform::plainNameFault(name);
    if (platform::inCapitals(name) == "FMITOOLS") {
        fault = "that folder is for clean-up scripts";
    }
    if (fault) {
        throw std::runtime_error("FMISolver - \"-instance " + std::string(name) +
                                 "\" cannot be part of the names of files: " + *fault);
    }
    instance_ = name;
}

void FmiSolverOptions::applyParameter(const Tokens& tokens, std::size_t index, bool fileGiven) {
    if (fileGiven) {
        printLine({"Ignoring individual parameter setting as parameterfile is found."});
        return;
    }
    // Only the name must not look like an option: values may be negative numbers.
    if (index + 2 < tokens.size() && hasArgument(tokens, index)) {
        parameters_[std::string(tokens[index + 1])] = tokens[index + 2];
    }
}

void FmiSolverOptions::applyParameterFile(const Tokens& tokens, std::size_t index) {
    printLine({"Found parameter file"});
    if (!hasArgument(tokens, index)) {
        return;
    }
    const std::string path(tokens[index + 1]);
    printLine({"Reading parameter file: ", path});
    if (!readParametersFile(path)) {
        printLine({"Failed to read parameter file: ", path});
    }
}

} // namespace run_config
