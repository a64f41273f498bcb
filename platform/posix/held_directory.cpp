#include "platform/held_directory.h"

#include "platform/posix/descriptors.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr mode_t everything = 0777; // The process's umask takes away what it wants to.
constexpr mode_t readableAndWritable = 0666;
constexpr int directoryFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

} // namespace

HeldDirectory::HeldDirectory(const std::string& path) : path_(path) {
    const int handle = ::open(path.c_str(), directoryFlags);
    if (handle >= 0) {
        levels_.push_back(handle);
    }
}

void HeldDirectory::leave(std::size_t depth) {
    while (levels_.size() > depth) {
        ::close(static_cast<int>(levels_.back()));
        levels_.pop_back();
    }
    names_.resize(depth > 0 ? levels_.size() - 1 : 0);
}

bool HeldDirectory::descend(const std::string& name) {
    const int parent = static_cast<int>(levels_.back());
    ::mkdirat(parent, name.c_str(), everything);
    const int handle = ::openat(parent, name.c_str(), directoryFlags | O_NOFOLLOW);
    if (handle < 0) {
        return false;
    }
    levels_.push_back(handle);
    names_.push_back(name);
    return true;
}

void HeldDirectory::remove(const std::string& name) {
    ::unlinkat(static_cast<int>(levels_.back()), name.c_str(), 0);
}

OutputFile HeldDirectory::create(const std::string& name) {
    remove(name);
    const int handle = awayFromStandardStreams(
        ::openat(static_cast<int>(levels_.back()), name.c_str(),
                 O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, readableAndWritable));
    return {handle, handle < 0 ? errno : 0};
}

bool HeldDirectory::read(const std::string& name,
                         const std::function<bool(std::string_view)>& sink) {
    const int file = ::openat(static_cast<int>(levels_.back()), name.c_str(),
                              O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);

    struct stat status {};

    bool isRead = file >= 0 && ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    std::array<char, 65536> block;
    while (isRead) {
        const ssize_t size = ::read(file, block.data(), block.size());
        if (size == 0) {
            break;
        }
        isRead = size > 0 && sink({block.data(), static_cast<std::size_t>(size)});
    }
    if (file >= 0) {
        ::close(file);
    }
    return isRead;
}

} // namespace platform
