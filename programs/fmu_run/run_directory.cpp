#include "fmu_run/run_directory.h"

#include "platform/files.h"
#include "program_support/input_error.h"

#include <random>

namespace fmu_run {

namespace fs = std::filesystem;
using program_support::InputError;

namespace {

fs::path makeTemporaryDirectory() {
    std::random_device random;
    std::error_code error;
    const auto parent = fs::temp_directory_path(error);
    for (int attempt = 0; attempt < 100 && !error; ++attempt) {
        auto directory = parent / ("fmu_run_" + std::to_string(random()));
        if (fs::create_directory(directory, error)) {
            // What a model does is its owner's business, and so is what it unpacks.
            fs::permissions(directory, fs::perms::owner_all, error);
            return directory;
        }
    }
    throw InputError("cannot make a temporary directory in '" + platform::narrowPath(parent) +
                     "': " + error.message() + "; set TMPDIR (TEMP on Windows) to one for you");
}

} // namespace

RunDirectory::RunDirectory(const std::string& unpackDirectory)
    : temporary_(makeTemporaryDirectory()),
      unpackDirectory_(platform::narrowPath(
          unpackDirectory.empty() ? temporary_ / "fmu"
                                  : fs::absolute(platform::nativePath(unpackDirectory)))) {
    if (!platform::createDirectories(unpackDirectory_)) {
        fs::remove_all(temporary_);
        throw InputError("cannot make the directory '" + unpackDirectory_ +
                         "'; choose another by --working-directory");
    }
}

RunDirectory::~RunDirectory() {
    std::error_code error;
    fs::remove_all(temporary_, error);
}

std::string RunDirectory::temporaryFile(const std::string& name) const {
    return platform::narrowPath(temporary_ / name);
}

} // namespace fmu_run
