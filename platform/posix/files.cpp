#include "platform/files.h"

#include "platform/path_style.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace platform {

const PathStyle& nativePaths() {
    return posixPaths;
}

std::filesystem::path nativePath(std::string_view path) {
    return path;
}

std::string narrowPath(const std::filesystem::path& path) {
    return path.string();
}

bool isSamePath(const std::filesystem::path& first, const std::filesystem::path& second) {
    return first == second;
}

std::error_code readingFault(const std::filesystem::path& file) {
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (std::filesystem::is_directory(status)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    if (std::filesystem::is_other(status)) { // Opening a pipe would show at its other end.
        return {};
    }
    const int opened = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (opened < 0) {
        return {errno, std::generic_category()};
    }
    ::close(opened);
    return {};
}

} // namespace platform
