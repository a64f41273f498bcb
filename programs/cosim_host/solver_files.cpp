#include "programs/cosim_host/solver_files.h"

#include "platform/files.h"
#include "run_config/run_paths.h"

namespace cosim_host {

SolverFiles solverFiles(const std::string& workingDirectory, const std::string& fmuPath) {
    const std::string stem = run_config::runFileStem(
        platform::nativePaths(), run_config::outputDirectoryFor(workingDirectory), fmuPath);
    return {platform::nativePath(stem + ".out"), platform::nativePath(stem + ".csv")};
}

} // namespace cosim_host
