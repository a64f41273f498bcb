#include "platform/output_file.h"

#include "platform/posix/descriptors.h"

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

int openForWriting(const char* path) {
    return awayFromStandardStreams(
        ::open(path, O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, readableAndWritable));
}

mode_t kindOf(int file) {
    struct stat status {};

    return ::fstat(file, &status) == 0 ? status.st_mode & S_IFMT : 0;
}

/// Whether `path` (still) leads to the open `file`.
bool leadsTo(int file, const char* path) {
    struct stat opened {};

    struct stat named {};

    return ::fstat(file, &opened) == 0 && ::stat(path, &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

int openForReading(const std::filesystem::path& path) {
    return ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
}

void closeFile(int file) {
    if (file >= 0) {
        ::close(file);
    }
}

enum class Held { here, elsewhere, forAMoment };

/// Locks of an open file description stand between the handles of one process, too, and go with the
/// handle.
struct flock wholeFile(short type) {
    struct flock lock {};

    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    return lock;
}

/// Tries to lock a file for this handle alone. Who writes to it has such a lock; who is about to
/// remove it, one that readers share.
Held hold(int file) {
    auto lock = wholeFile(F_WRLCK);
    if (::fcntl(file, F_OFD_SETLK, &lock) == 0 || (errno != EAGAIN && errno != EACCES)) {
        return Held::here; // Also where the file system has no locks.
    }
    const bool isAnswered = ::fcntl(file, F_OFD_GETLK, &lock) == 0;
    return isAnswered && lock.l_type == F_WRLCK ? Held::elsewhere : Held::forAMoment;
}

/// Opens `path` and holds it if it is a file. -1 with the reason in errno, which is EWOULDBLOCK
/// for a file that another handle holds.
int openAndHold(const char* path) {
    constexpr int attempts = 100;
    constexpr timespec pause{0, 1'000'000};
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const int file = openForWriting(path);
        if (file < 0 || kindOf(file) != S_IFREG) {
            return file;
        }
        const Held held = hold(file);
        if (held == Held::here && leadsTo(file, path)) {
            return file;
        }
        ::close(file);
        if (held == Held::elsewhere) {
            break;
        }
        ::nanosleep(&pause, nullptr); // Somebody removes it, or has just removed it.
    }
    errno = EWOULDBLOCK;
    return -1;
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

/// A question for every write would cost a call of the system: asked for a new file, and after a
/// write that stopped short, since a limit may be set at any time.
bool filesAreLimited() {
    rlimit limit{};
    return ::getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
}

} // namespace

OutputFile::OutputFile(const char* path) : handle_(openAndHold(path)) {
    error_ = isOpen() ? 0 : errno;
    isTaken_ = error_ == EWOULDBLOCK;
    isLimited_ = filesAreLimited();
    if (!isOpen()) {
        return;
    }
    const int file = static_cast<int>(handle_);
    // A write to a pipe that nobody empties fails instead of waiting; all else is as usual.
    if (kindOf(file) != S_IFIFO) {
        ::fcntl(file, F_SETFL, O_RDWR);
    }
    clear();
}

bool OutputFile::isAt(const char* path) const {
    return isOpen() && leadsTo(static_cast<int>(handle_), path);
}

void OutputFile::clear() {
    const int file = static_cast<int>(handle_);
    if (kindOf(file) == S_IFREG && ::ftruncate(file, 0) == 0) {
        ::lseek(file, 0, SEEK_SET);
    }
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
        // A write that meets a limit ends there; only one that begins there raises the signal.
        isLimited_ = isLimited_ || (size > 0 && filesAreLimited());
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

bool isHeld(const std::filesystem::path& path) {
    const int file = openForReading(path);
    auto lock = wholeFile(F_RDLCK); // One that stands beside those of who removes it.
    const bool isHeld =
        file >= 0 && ::fcntl(file, F_OFD_GETLK, &lock) == 0 && lock.l_type == F_WRLCK;
    closeFile(file);
    return isHeld;
}

void removeUnheldFile(const std::filesystem::path& path) {
    const int file = openForReading(path);
    auto lock = wholeFile(F_RDLCK);
    const bool isHeld =
        file >= 0 && ::fcntl(file, F_OFD_SETLK, &lock) != 0 && (errno == EAGAIN || errno == EACCES);
    std::error_code error;
    // Also one that may not be read, and so not be asked.
    if (!isHeld && is_regular_file(symlink_status(path, error))) {
        std::filesystem::remove(path, error);
    }
    closeFile(file);
}

} // namespace platform
