#include "platform/temporary_directory.h"

#include "platform/posix/descriptors.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

std::filesystem::path placeOfTemporaryFiles() {
    for (const char* variable : {"TMPDIR", "TMP", "TEMP", "TEMPDIR"}) {
        const char* place = std::getenv(variable);
        if (place != nullptr && *place != '\0') {
            return place;
        }
    }
    return "/tmp";
}

bool createPrivateDirectory(const std::filesystem::path& directory, std::error_code& error) {
    error.clear();
    if (mkdir(directory.c_str(), S_IRWXU) == 0) {
        return true;
    }
    if (errno != EEXIST) {
        error.assign(errno, std::generic_category());
    }
    return false;
}

std::uint32_t processNumber() {
    return static_cast<std::uint32_t>(getpid());
}

std::intptr_t holdDirectory(const std::filesystem::path& directory) {
    const int file = awayFromStandardStreams(
        open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (file >= 0) {
        flock(file, LOCK_SH | LOCK_NB);
    }
    return file;
}

void releaseDirectory(std::intptr_t hold) {
    if (hold >= 0) {
        close(static_cast<int>(hold));
    }
}

bool isAbandoned(const std::filesystem::path& directory, std::uint32_t process) {
    const auto number = static_cast<pid_t>(process);
    if (number <= 0 || kill(number, 0) == 0 || errno != ESRCH) {
        return false;
    }
    const int file = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (file < 0) {
        return false;
    }

    struct stat status {};

    const bool isOwn = fstat(file, &status) == 0 && status.st_uid == geteuid();
    const bool isFree = isOwn && flock(file, LOCK_EX | LOCK_NB) == 0;
    close(file);
    return isFree;
}

} // namespace platform
