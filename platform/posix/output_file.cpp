#include "platform/output_file.h"

#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

constexpr mode_t readableAndWritable = 0666; // The process's umask takes away what it wants to.

/// `file` under a number that no standard stream has. A process whose standard streams are closed
/// gives their numbers to what it opens next, and what is printed would end in there.
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

int openForWriting(const char* path) {
    const int file = awayFromStandardStreams(
        ::open(path, O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, readableAndWritable));

    struct stat status {};

    // A write to a pipe that nobody empties fails instead of waiting; all else is as usual.
    if (file >= 0 && (::fstat(file, &status) != 0 || !S_ISFIFO(status.st_mode))) {
        ::fcntl(file, F_SETFL, O_RDWR);
    }
    return file;
}

/// Writes like write(), but where the process has a limit on the size of files, going beyond it is
/// an error instead of a signal that ends the process.
ssize_t writeWithin(int file, const char* text, std::size_t size, bool isLimited) {
    if (!isLimited) {
        return ::write(file, text, size);
    }
    sigset_t signal;
    sigset_t before;
    sigemptyset(&signal);
    sigaddset(&signal, SIGXFSZ);
    pthread_sigmask(SIG_BLOCK, &signal, &before);
    const ssize_t written = ::write(file, text, size);
    const int error = errno;
    if (written < 0 && error == EFBIG && sigismember(&before, SIGXFSZ) == 0) {
        const timespec none{};
        sigtimedwait(&signal, nullptr, &none);
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    errno = error;
    return written;
}

/// Asked once a file: a question for every write would cost a call of the system.
bool filesAreLimited() {
    rlimit limit{};
    return ::getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
}

} // namespace

OutputFile::OutputFile(const char* path) : handle_(openForWriting(path)) {
    error_ = isOpen() ? 0 : errno;
    isLimited_ = filesAreLimited();
}

bool OutputFile::write(std::string_view text) {
    const int file = static_cast<int>(handle_);
    const char* rest = text.data();
    std::size_t size = text.size();
    while (size > 0) {
        const ssize_t written = writeWithin(file, rest, size, isLimited_);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            error_ = written < 0 ? errno : ENOSPC; // Nothing was taken, and no reason told.
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

bool OutputFile::isOfUse(int error) {
    return error == ETXTBSY;
}

void OutputFile::close() {
    if (isOpen()) {
        ::close(static_cast<int>(std::exchange(handle_, -1)));
    }
}

} // namespace platform
