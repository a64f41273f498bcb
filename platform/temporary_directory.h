#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace platform {

/// A new, empty directory in the system's place for temporary files, removed with the object. What
/// a process could not remove, because it crashed or a file was still held, goes when the next one
/// makes a directory of that prefix.
class TemporaryDirectory {
  public:
    /// The directory's name is `prefix`, the process's number, "_" and six letters that no name
    /// there had before. Only its owner may look into it. Removes what ended processes of this user
    /// left with that prefix.
    ///
    /// @throws std::filesystem::filesystem_error with the place and the reason when it cannot be
    ///         made.
    explicit TemporaryDirectory(std::string_view prefix);

    /// As removeDirectory(), again and again for a fifth of a second where a file is held by others
    /// such as virus scanners; what cannot be removed then stays.
    ~TemporaryDirectory();

    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    TemporaryDirectory(TemporaryDirectory&&) = delete;
    TemporaryDirectory& operator=(TemporaryDirectory&&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    std::filesystem::path operator/(const std::filesystem::path& name) const {
        return path_ / name;
    }

  private:
    std::filesystem::path path_;
    std::intptr_t hold_; ///< Of holdDirectory().
};

/// Makes a directory in `parent` that is called `prefix` and six letters and was not there before,
/// for its owner only. An empty path, with the reason in `error`, when that fails.
std::filesystem::path makeUniqueDirectory(const std::filesystem::path& parent,
                                          std::string_view prefix, std::error_code& error);

/// Removes `directory` with all that is in it; links are removed, not followed. Goes on past what
/// cannot be removed. The first reason why something stayed; none, too, when there was nothing.
std::error_code removeDirectory(const std::filesystem::path& directory);

/// Where the system and the user's environment want temporary files: TMPDIR, or TEMP on Windows,
/// among others. There may be no such directory.
std::filesystem::path placeOfTemporaryFiles();

/// Makes a directory that only its owner may use. False, with the reason in `error`, when that
/// fails; false without a reason when there is one of that name.
bool createPrivateDirectory(const std::filesystem::path& directory, std::error_code& error);

/// The number of this process.
std::uint32_t processNumber();

/// Marks a directory as in use until releaseDirectory() or the end of the process, also for
/// processes that see other process numbers, as containers do.
std::intptr_t holdDirectory(const std::filesystem::path& directory);
void releaseDirectory(std::intptr_t hold);

/// True when `directory` is a directory of this user that is not held, and no process of that number
/// lives. False where it cannot be told.
bool isAbandoned(const std::filesystem::path& directory, std::uint32_t process);

} // namespace platform
