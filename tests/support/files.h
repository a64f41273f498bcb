#pragma once

#include "platform/temporary_directory.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace test_support {

/// A new, empty directory in the system's place for temporary files, removed with the object.
class TemporaryDirectory {
  public:
    /// With a `name`, which may hold blanks and letters beyond ASCII, the directory is called so
    /// inside a unique one.
    explicit TemporaryDirectory(const std::filesystem::path& name = {});

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    std::filesystem::path operator/(const std::filesystem::path& name) const {
        return path_ / name;
    }

  private:
    platform::TemporaryDirectory root_{"fmi_solver_test_"};
    std::filesystem::path path_;
};

/// The bytes of a file; an empty text when it cannot be read.
std::string readFile(const std::filesystem::path& file);

/// Makes `file` hold exactly these bytes.
void writeFile(const std::filesystem::path& file, std::string_view content);

/// The lines of `text` without their "\n"; a text after the last "\n" is a line, too.
std::vector<std::string> lines(std::string_view text);

/// `path` as the narrow text that the runtime and the programs take.
std::string narrow(const std::filesystem::path& path);

/// Path of an example FMU of this build, such as "tyre" for tyre.fmu.
std::filesystem::path fmuPath(std::string_view name);

/// The file of a shared library that the build made, by the name that the file has without its ending.
std::filesystem::path libraryPath(std::string_view name);

} // namespace test_support
