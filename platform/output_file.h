#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

/// A text file that is only written, without any buffer of the process: what was written is with
/// the operating system when write() returns and survives the end of the process.
///
/// While it is open nobody else has it as an OutputFile, in this process or another: the system
/// holds it, and lets go when it is closed or the process ends in whatever way. Readers are never
/// kept out. What is no file, such as a device, is not held, nor is one whose file system cannot.
class OutputFile {
  public:
    OutputFile() = default;
    /// Creates `path`, or empties it once it is held; the line ends stay as they are written.
    explicit OutputFile(const char* path);
    ~OutputFile();
    OutputFile(OutputFile&& other) noexcept;
    OutputFile& operator=(OutputFile&& other) noexcept;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    [[nodiscard]] bool isOpen() const;

    /// After opening has failed: whether that is because somebody else has the file.
    [[nodiscard]] bool isTaken() const { return isTaken_; }

    /// Whether `path` leads to this open file.
    [[nodiscard]] bool isAt(const char* path) const;

    /// Empties the file, to be written anew from its begin.
    void clear();

    /// Appends `text` in one call of the operating system. A text that does not fit as a whole (a
    /// full disk) leaves none of its bytes behind. False when it was not written.
    bool write(std::string_view text);

    /// The system's words for what made opening or the last write() fail; in our own that another
    /// run or program uses the file.
    [[nodiscard]] std::string lastError() const;

    /// What to do about it.
    [[nodiscard]] std::string remedy() const;

    void close();

  private:
    friend class HeldDirectory;

    [[nodiscard]] bool isInUse() const;

    /// Whether that is the system's error for a file that another program uses.
    static bool isOfUse(int error);

    /// Takes over a handle of the system, or the reason why there is none.
    OutputFile(std::intptr_t handle, int error) : handle_(handle), error_(error) {}

    /// Removes the last `size` bytes written.
    void takeBack(std::size_t size);

    std::intptr_t handle_ = -1;
    int error_ = 0;
    bool isLimited_ = false; ///< The process may not write files of any size.
    bool isTaken_ = false;
};

/// Whether `file` is open as an OutputFile, in this process or another.
bool isHeld(const std::filesystem::path& file);

/// Removes a file unless it is open as an OutputFile. What is no file stays: so does a link.
void removeUnheldFile(const std::filesystem::path& file);

} // namespace platform
