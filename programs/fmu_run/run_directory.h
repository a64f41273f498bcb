#pragma once

#include "platform/claim.h"
#include "platform/temporary_directory.h"

#include <string>

namespace fmu_run {

/// The directories of one run: a temporary one that is removed with the object, and the one the FMU
/// is unpacked into, which is inside it unless the user named another. No two runs have the same.
class RunDirectory {
  public:
    RunDirectory() : RunDirectory({}, {}) {}

    /// `unpackDirectory` is the user's, empty for none. Where another run has it, a folder in it is
    /// taken that is called like `model` and has a number; standard error says so.
    ///
    /// @throws program_support::InputError when one cannot be made.
    RunDirectory(const std::string& unpackDirectory, const std::string& model);

    [[nodiscard]] const std::filesystem::path& temporary() const { return temporary_.path(); }

    /// Absolute path of the directory to unpack the FMU into.
    [[nodiscard]] const std::string& unpackDirectory() const { return unpackDirectory_.path; }

    /// Path of a file that goes with the run.
    [[nodiscard]] std::string temporaryFile(const std::string& name) const;

  private:
    platform::TemporaryDirectory temporary_;
    platform::ClaimedDirectory unpackDirectory_;
};

} // namespace fmu_run
