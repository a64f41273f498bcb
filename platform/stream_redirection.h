#pragma once

#include <cstdio>
#include <string>

namespace platform {

/// While it lives, what this process and the programs it starts write to a standard stream goes to
/// a file instead. Redirections of one stream end in the reverse order of their beginning.
class StreamRedirection {
  public:
    /// Appends to `path`, which is created when missing. When it cannot be opened the stream stays
    /// as it is.
    StreamRedirection(std::FILE* stream, const std::string& path);
    ~StreamRedirection();

    /// The stream's own target meanwhile; the stream itself where it stays as it is, and where
    /// nothing can be written to its own target.
    [[nodiscard]] std::FILE* original() const { return writer_ != nullptr ? writer_ : stream_; }

    StreamRedirection(const StreamRedirection&) = delete;
    StreamRedirection& operator=(const StreamRedirection&) = delete;
    StreamRedirection(StreamRedirection&&) = delete;
    StreamRedirection& operator=(StreamRedirection&&) = delete;

  private:
    std::FILE* stream_;
    int original_ = -1;           ///< Descriptor that keeps the stream's own target.
    std::FILE* writer_ = nullptr; ///< Writes to it, unbuffered.
};

} // namespace platform
