#include "support/run_program.h"

#include "support/run_program_platform.h"

namespace test_support {

ProgramResult runProgram(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments, const RunOptions& options) {
    const TemporaryDirectory directory;
    const StandardStreams streams{directory / "input", directory / "output", directory / "error"};
    writeFile(streams.input, options.standardInput);
    auto result = runWithStreams(program, arguments, options, streams);
    result.output = readFile(streams.output);
    result.error = readFile(streams.error);
    return result;
}

std::filesystem::path programPath(std::string_view name) {
    return std::filesystem::path(PROGRAM_DIRECTORY) / (std::string(name) + PROGRAM_SUFFIX);
}

} // namespace test_support
