#include "programs/fmu_run/run_directory.h"

#include "platform/files.h"
#include "programs/support/input_error.h"
#include "programs/support/temporary_directory.h"

#include <iostream>

namespace fmu_run {

RunDirectory::RunDirectory(const std::string& unpackDirectory, const std::string& model)
    : temporary_(program_support::makeTemporaryDirectory("fmu_run_")) {
    const auto wanted = unpackDirectory.empty()
                            ? temporary_ / "fmu"
                            : std::filesystem::absolute(platform::nativePath(unpackDirectory));
    const std::string path = platform::narrowPath(wanted);
    if (const auto error = platform::createDirectories(path)) {
        throw program_support::InputError("cannot make the directory '" + path +
                                          "': " + error.message() +
                                          "; choose another by --working-directory");
    }
    unpackDirectory_ = platform::claimFreeDirectory(
        path, platform::narrowPath(wanted / platform::nativePath(model).stem()));
    if (!unpackDirectory_.isFirst) {
        std::cerr << "fmu_run: another run has its FMU in '" << path << "'; this one unpacks into '"
                  << unpackDirectory_.path << "'\n";
    }
}

std::string RunDirectory::temporaryFile(const std::string& name) const {
    return platform::narrowPath(temporary_ / name);
}

} // namespace fmu_run
