#pragma once

#include "platform/output_file.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A directory that is held open while files are made below it: no link is followed on the way
/// down, also none that somebody else puts there meanwhile.
///
/// POSIX: every name is opened relative to the folder above it, which is held open itself. Windows:
/// the folders on the way are held open so that nobody can rename or remove them, and are checked
/// not to be links or junctions once they are held; files are made by their path.
class HeldDirectory {
  public:
    /// Opens `path`, which may itself be a link.
    explicit HeldDirectory(const std::string& path);
    ~HeldDirectory();
    HeldDirectory(const HeldDirectory&) = delete;
    HeldDirectory& operator=(const HeldDirectory&) = delete;
    HeldDirectory(HeldDirectory&&) = delete;
    HeldDirectory& operator=(HeldDirectory&&) = delete;

    [[nodiscard]] bool isOpen() const { return !levels_.empty(); }

    /// Goes to `folder` below the directory ("a/b", "" for the directory itself) and makes what is
    /// missing of it. False when something else than a folder is in the way.
    bool enter(std::string_view folder);

    /// Removes the file or link `name` of the folder that was entered.
    void remove(const std::string& name);

    /// Makes a new file in the folder that was entered, in place of the file or link of that name;
    /// a process that has the old one open or mapped keeps it. Check isOpen() of the result.
    OutputFile create(const std::string& name);

    /// Hands the bytes of the file `name` of the folder that was entered to `sink`, until that
    /// answers false. False when they were not all taken and when there is no such file, also when
    /// it is a link.
    bool read(const std::string& name, const std::function<bool(std::string_view)>& sink);

  private:
    void leave(std::size_t depth);
    bool descend(const std::string& name);

    std::string path_;                  ///< Windows: of the folder that was entered.
    std::vector<std::intptr_t> levels_; ///< Handles of the directory and of the folders entered.
    std::vector<std::string> names_;    ///< Of the folders entered.
};

} // namespace platform
