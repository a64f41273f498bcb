#include "platform/posix/descriptors.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace platform {

int awayFromStandardStreams(int file) {
    if (file < 0 || file > STDERR_FILENO) {
        return file;
    }
    const int moved = ::fcntl(file, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int error = errno;
    ::close(file);
    errno = error;
    return moved;
}

} // namespace platform
