#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// A text file that is only written, without any buffer of the process: what was written is with
/// the operating system when write() returns and survives the end of the process.
class OutputFile {
  public:
    OutputFile() = default;
    /// Creates or truncates `path`; the line ends stay as they are written.
    explicit OutputFile(const char* path);
    ~OutputFile();
    OutputFile(OutputFile&& other) noexcept;
    OutputFile& operator=(OutputFile&& other) noexcept;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    [[nodiscard]] bool isOpen() const;

    /// Appends `text` in one call of the operating system. A text that does not fit as a whole (a
    /// full disk) leaves none of its bytes behind. False when it was not written.
    bool write(std::string_view text);

    /// The system's words for what made opening or the last write() fail; in our own that another
    /// program uses the file.
    [[nodiscard]] std::string lastError() const;

    /// What to do about it.
    [[nodiscard]] std::string remedy() const;

    void close();

  private:
    friend class HeldDirectory;

    /// Whether that is the system's error for a file that another program uses.
    static bool isOfUse(int error);

    /// Takes over a handle of the system, or the reason why there is none.
    OutputFile(std::intptr_t handle, int error) : handle_(handle), error_(error) {}

    /// Removes the last `size` bytes written.
    void takeBack(std::size_t size);

    std::intptr_t handle_ = -1;
    int error_ = 0;
    bool isLimited_ = false; ///< The process may not write files of any size.
};

} // namespace platform
