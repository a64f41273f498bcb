#include "support/run_program.h"

#include "support/run_program_platform.h"

namespace test_support {

namespace {

/// What a program printed, with the line ends of C whatever the platform's consoles take.
std::string readPrinted(const std::filesystem::path& file) {
    std::string text = readFile(file);
    for (auto end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n", end)) {
        text.erase(end, 1);
    }
    return text;
}

} // namespace

ProgramResult runProgram(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments, const RunOptions& options) {
    const TemporaryDirectory directory;
    const StandardStreams streams{directory / "input", directory / "output", directory / "error"};
    writeFile(streams.input, options.standardInput);
    auto result = runWithStreams(program, arguments, options, streams);
    result.output = readPrinted(streams.output);
    result.error = readPrinted(streams.error);
    return result;
}

std::filesystem::path programPath(std::string_view name) {
    return std::filesystem::path(BUILD_DIRECTORY "/bin") / (std::string(name) + PROGRAM_SUFFIX);
}

} // namespace test_support
