/// Command lines of the solver: any tokens are taken, and each switch acts wherever it stands.
#include "fuzz/fuzz_support.h"
#include "platform/file_names.h"
#include "platform/temporary_directory.h"
#include "run_config/fmi_solver_options.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace {

using Tokens = std::vector<std::string>;

/// A parameters file that a command line can name.
std::string parametersFile() {
    static const platform::TemporaryDirectory scratch("fuzz_");
    const auto file = scratch / "p.xml";
    fuzz::writeFile(file, "<FMUSettings Version='1.0'><Parameters>"
                          "<Parameter Name='fromFile' Type='Real'>1</Parameter>"
                          "</Parameters></FMUSettings>");
    return file.string();
}

/// A made-up token names no file of the machine but that one.
std::string takeToken(fuzz::Bytes& bytes) {
    static const std::string file = parametersFile();
    std::string token = bytes.takeText();
    if (token == "p.xml") {
        return file;
    }
    std::ranges::replace_if(
        token, [](char c) { return c == '/' || c == '.'; }, '_');
    return token;
}

bool has(const Tokens& tokens, std::string_view option) {
    return tokens.size() > 1 && std::ranges::find(tokens, option) != tokens.end();
}

void check(const run_config::FmiSolverOptions& options, const Tokens& tokens) {
    fuzz::require(options.fmuPath() == tokens.front(), "the first token is the FMU's path");
    fuzz::require(options.includeLocal() != has(tokens, "-nolocal"), "-nolocal acts");
    fuzz::require(options.arrayInputs() != has(tokens, "-noarrayinputs"), "-noarrayinputs acts");
    fuzz::require(options.outputsAreArrays() == has(tokens, "-outputsarearrays"),
                  "-outputsarearrays acts");
    fuzz::require(options.fmuType().empty() || has(tokens, options.fmuType()),
                  "the kind is one of the tokens");
    fuzz::require(options.instance().empty() || !platform::plainNameFault(options.instance()),
                  "an instance can be part of the names of files");
    for (const auto& [name, value] : options.parameters()) {
        fuzz::require(!name.starts_with('-'), "no name looks like an option");
        fuzz::require(name == "fromFile" || (has(tokens, name) && has(tokens, value)),
                      "a parameter comes from the tokens or the file");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::silenceStandardOutput();
    fuzz::Bytes bytes(data, size);
    Tokens tokens;
    while (!bytes.empty()) {
        tokens.push_back(takeToken(bytes));
    }
    if (tokens.empty()) {
        return 0;
    }
    // Exactly as many entries as tokens: a look beyond the last one is a finding.
    std::vector<char*> arguments;
    for (std::string& token : tokens) {
        arguments.push_back(token.data());
    }
    arguments.shrink_to_fit();
    run_config::FmiSolverOptions options;
    try {
        fuzz::require(
            options.parseArguments(static_cast<int>(arguments.size()), arguments.data()) == 0,
            "every command line is taken");
        check(options, tokens);
    } catch (const std::runtime_error&) {
        fuzz::require(has(tokens, "-instance"), "but for an instance that has no name of a file");
    }
    return 0;
}
