#include "programs/fmu_run/run_directory.h"

#include "platform/files.h"
#include "programs/support/input_error.h"
#include "programs/support/temporary_directory.h"

namespace fmu_run {

RunDirectory::RunDirectory(const std::string& unpackDirectory)
    : temporary_(program_support::makeTemporaryDirectory("fmu_run_")),
      unpackDirectory_(platform::narrowPath(
          unpackDirectory.empty()
              ? temporary_ / "fmu"
              : std::filesystem::absolute(platform::nativePath(unpackDirectory)))) {
    if (const auto error = platform::createDirectories(unpackDirectory_)) {
        throw program_support::InputError("cannot make the directory '" + unpackDirectory_ +
                                          "': " + error.message() +
                                          "; choose another by --working-directory");
    }
}

std::string RunDirectory::temporaryFile(const std::string& name) const {
    return platform::narrowPath(temporary_ / name);
}

} // namespace fmu_run
