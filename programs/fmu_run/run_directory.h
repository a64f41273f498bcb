#pragma once

#include "platform/temporary_directory.h"

#include <string>

namespace fmu_run {

/// The directories of one run: a temporary one that is removed with the object, and the one the FMU
/// is unpacked into, which is inside it unless the user named another.
class RunDirectory {
  public:
    /// `unpackDirectory` is the user's, empty for none.
    ///
    /// @throws program_support::InputError when one cannot be made.
    explicit RunDirectory(const std::string& unpackDirectory = {});

    [[nodiscard]] const std::filesystem::path& temporary() const { return temporary_.path(); }

    /// Absolute path of the directory to unpack the FMU into.
    [[nodiscard]] const std::string& unpackDirectory() const { return unpackDirectory_; }

    /// Path of a file that goes with the run.
    [[nodiscard]] std::string temporaryFile(const std::string& name) const;

  private:
    platform::TemporaryDirectory temporary_;
    std::string unpackDirectory_;
};

} // namespace fmu_run
