#include "platform/shared_library.h"

#include <utility>

namespace platform {

SharedLibrary::~SharedLibrary() {
    close();
}

SharedLibrary::SharedLibrary(SharedLibrary&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)),
      error_(std::move(other.error_)) {}

SharedLibrary& SharedLibrary::operator=(SharedLibrary&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(error_, other.error_);
    return *this;
}

} // namespace platform
