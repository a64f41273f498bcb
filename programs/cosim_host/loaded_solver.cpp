#include "programs/cosim_host/loaded_solver.h"

#include "platform/files.h"
#include "platform/program_path.h"
#include "programs/support/input_error.h"
#include "programs/support/input_files.h"
#include "programs/support/kept_output.h"

#include <system_error>
#include <utility>

namespace cosim_host {

using program_support::InputError;

namespace {

using Factory = Solver* (*)();

/// Libraries are loaded by absolute path: a bare name would be looked for elsewhere.
std::string absolutePath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute =
        std::filesystem::absolute(platform::nativePath(path), error);
    return error ? path : platform::narrowPath(absolute);
}

} // namespace

LoadedSolver::LoadedSolver(const std::string& library, std::filesystem::path keptIn)
    : keptIn_(std::move(keptIn)) {
    program_support::requireReadableFile(library);
    const program_support::KeptOutput kept(keptIn_);
    make(library);
}

LoadedSolver::~LoadedSolver() {
    const program_support::KeptOutput kept(keptIn_);
    solver_.reset();
    library_.close();
}

void LoadedSolver::make(const std::string& library) {
    if (!library_.open(absolutePath(library))) {
        throw InputError("cannot load the solver library '" + library + "': " + library_.error() +
                         "; name a solver library for this platform with --solver");
    }
    const auto factory = reinterpret_cast<Factory>(library_.symbol("createSolver"));
    if (factory == nullptr) {
        throw InputError(
            "'" + library +
            "' is no solver library, it has no createSolver; name another with --solver");
    }
    solver_.reset(factory());
    if (!solver_) {
        throw InputError("createSolver of '" + library +
                         "' made no solver; free memory, or name another library with --solver");
    }
}

std::string defaultSolverLibrary() {
    const auto programs = platform::nativePath(platform::programPath()).parent_path();
    const std::string name = std::string("fmi_solver") + platform::SharedLibrary::suffix();
    for (const auto& candidate : {programs / name, programs / ("lib" + name),
                                  programs.parent_path() / "lib" / ("lib" + name)}) {
        std::error_code error;
        if (std::filesystem::exists(candidate, error)) {
            return platform::narrowPath(candidate);
        }
    }
    throw InputError("there is no " + name + " beside cosim_host; name the library with --solver");
}

} // namespace cosim_host
