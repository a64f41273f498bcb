#include "platform/claim.h"

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace platform {

void Claim::release() {
    if (handle_ != -1) {
        ::close(static_cast<int>(std::exchange(handle_, -1)));
    }
}

// The directory itself is locked: a file for that would stay behind where a process is killed.
Claim claimDirectory(const std::string& directory) {
    const int file = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool isTaken = file >= 0 && ::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    Claim claim(file, isTaken);
    if (isTaken) {
        claim.release();
    }
    return claim;
}

// A byte is locked of a file that each process has for itself, far behind its end: that needs no
// name in the file system, and no process meets the claims of another.
Claim claimInProcess(std::string_view name) {
    struct flock lock {};

    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = static_cast<off_t>(std::hash<std::string_view>()(name) >> 2U);
    lock.l_len = 1;
    const int file = ::open("/proc/self/comm", O_RDWR | O_CLOEXEC);
    const bool isTaken =
        file >= 0 && ::fcntl(file, F_OFD_SETLK, &lock) != 0 && (errno == EAGAIN || errno == EACCES);
    Claim claim(file, isTaken);
    if (isTaken) {
        claim.release();
    }
    return claim;
}

} // namespace platform
