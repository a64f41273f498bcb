#include "platform/output_file.h"

#include <system_error>
#include <utility>

namespace platform {

OutputFile::~OutputFile() {
    close();
}

OutputFile::OutputFile(OutputFile&& other) noexcept
    : handle_(std::exchange(other.handle_, -1)),
      error_(other.error_),
      isLimited_(other.isLimited_),
      isTaken_(other.isTaken_) {}

OutputFile& OutputFile::operator=(OutputFile&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(error_, other.error_);
    std::swap(isLimited_, other.isLimited_);
    std::swap(isTaken_, other.isTaken_);
    return *this;
}

bool OutputFile::isOpen() const {
    return handle_ != -1;
}

std::string OutputFile::lastError() const {
    return isInUse() ? "another run or program is using it"
                     : std::system_category().message(error_);
}

std::string OutputFile::remedy() const {
    return isInUse() ? "end that one first"
                     : "make room and see that its folder is there and may be written";
}

bool OutputFile::isInUse() const {
    return isTaken_ || isOfUse(error_);
}

} // namespace platform
