#include "platform/shared_library.h"

#include "platform/library_file.h"

#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <fstream>
#include <link.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

std::string loaderMessage() {
    const char* message = dlerror();
    return message != nullptr ? message : "unknown error of the loader";
}

/// What the loader would not survive in the file `path`; nothing when it cannot be read.
std::optional<std::string> faultOf(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);

    struct stat status {};

    std::optional<std::string> fault;
    if (file >= 0 && ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
        const auto size = static_cast<std::size_t>(status.st_size);
        void* bytes = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        if (bytes != MAP_FAILED) {
            fault = faultOfLinuxLibrary({static_cast<const char*>(bytes), size});
            ::munmap(bytes, size);
        }
    }
    if (file >= 0) {
        ::close(file);
    }
    return fault;
}

/// The path in a line of /proc/self/maps if the line is of the mapping that has `address`.
std::string pathInMapping(const std::string& line, std::uintptr_t address) {
    char* end = nullptr;
    const auto first = std::strtoull(line.c_str(), &end, 16);
    const auto last = *end == '-' ? std::strtoull(end + 1, nullptr, 16) : 0;
    const auto path = line.find('/');
    return address >= first && address < last && path != std::string::npos ? line.substr(path)
                                                                           : std::string();
}

} // namespace

bool SharedLibrary::open(const std::string& path) {
    close();
    if (const auto fault = faultOf(path)) {
        error_ = path + ": " + *fault;
        return false;
    }
    handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        error_ = loaderMessage();
    }
    return isOpen();
}

std::string SharedLibrary::boundFile() const {
    const link_map* map = nullptr;
    if (!isOpen() || dlinfo(handle_, RTLD_DI_LINKMAP, static_cast<void*>(&map)) != 0) {
        return {};
    }
    const auto address = reinterpret_cast<std::uintptr_t>(map->l_ld);
    std::ifstream mappings("/proc/self/maps");
    for (std::string line; std::getline(mappings, line);) {
        if (std::string path = pathInMapping(line, address); !path.empty()) {
            return path;
        }
    }
    return {};
}

bool SharedLibrary::close() {
    if (!isOpen() || dlclose(std::exchange(handle_, nullptr)) == 0) {
        return true;
    }
    error_ = loaderMessage();
    return false;
}

void* SharedLibrary::symbol(const char* name) {
    void* address = dlsym(handle_, name);
    if (address == nullptr) {
        error_ = loaderMessage();
    }
    return address;
}

bool SharedLibrary::isLoaded(const std::string& path) {
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    return handle != nullptr && dlclose(handle) == 0;
}

const char* SharedLibrary::suffix() {
    return ".so";
}

const char* SharedLibrary::fmiPlatform() {
    return "linux64";
}

} // namespace platform
