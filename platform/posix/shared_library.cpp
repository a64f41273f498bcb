#include "platform/shared_library.h"

#include <dlfcn.h>
#include <utility>

namespace platform {

namespace {

std::string loaderMessage() {
    const char* message = dlerror();
    return message != nullptr ? message : "unknown error of the loader";
}

} // namespace

bool SharedLibrary::open(const std::string& path) {
    close();
    handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        error_ = loaderMessage();
    }
    return isOpen();
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

const char* SharedLibrary::suffix() {
    return ".so";
}

const char* SharedLibrary::fmiPlatform() {
    return "linux64";
}

} // namespace platform
