#include "platform/output_file.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

constexpr mode_t readableAndWritable = 0666; // The process's umask takes away what it wants to.

} // namespace

OutputFile::OutputFile(const char* path)
    : handle_(::open(path, O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, readableAndWritable)) {
    error_ = isOpen() ? 0 : errno;
}

bool OutputFile::write(std::string_view text) {
    const int file = static_cast<int>(handle_);
    const char* rest = text.data();
    std::size_t size = text.size();
    while (size > 0) {
        const ssize_t written = ::write(file, rest, size);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written < 0) {
            error_ = errno;
            takeBack(text.size() - size);
            return false;
        }
        rest += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

void OutputFile::takeBack(std::size_t size) {
    const int file = static_cast<int>(handle_);
    const off_t end = size > 0 ? ::lseek(file, -static_cast<off_t>(size), SEEK_CUR) : -1;
    if (end >= 0 && ::ftruncate(file, end) != 0) {
        ::lseek(file, 0, SEEK_END);
    }
}

void OutputFile::close() {
    if (isOpen()) {
        ::close(static_cast<int>(std::exchange(handle_, -1)));
    }
}

} // namespace platform
