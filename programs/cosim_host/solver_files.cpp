#include "reference_host/cosim_host/solver_files.h"

#include "platform/files.h"

#include <cstdlib>

namespace cosim_host {

SolverFiles solverFiles(const std::string& workingDirectory, const std::string& fmuPath) {
    const char* override = std::getenv("TEST_OUTPUT_PATH");
    const auto directory = platform::nativePath(override == nullptr ? workingDirectory : override);
    const std::filesystem::path stem = directory / platform::nativePath(fmuPath).stem();
    return {std::filesystem::path(stem) += ".out", std::filesystem::path(stem) += ".csv"};
}

} // namespace cosim_host
