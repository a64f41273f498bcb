#include "platform/files.h"

#include <system_error>

namespace platform {

std::optional<std::string> currentDirectory() {
    std::error_code error;
    const auto path = std::filesystem::current_path(error);
    return error ? std::nullopt : std::optional(narrowPath(path));
}

bool createDirectories(std::string_view directory) {
    std::error_code error;
    const auto path = nativePath(directory);
    std::filesystem::create_directories(path, error);
    return std::filesystem::is_directory(path, error);
}

} // namespace platform
