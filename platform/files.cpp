#include "platform/files.h"

#include <system_error>

namespace platform {

std::string currentDirectory(std::error_code& error) {
    const auto path = std::filesystem::current_path(error);
    return error ? std::string() : narrowPath(path);
}

std::error_code createDirectories(std::string_view directory) {
    std::error_code error;
    const auto path = nativePath(directory);
    std::filesystem::create_directories(path, error);
    std::error_code unknown;
    if (std::filesystem::is_directory(path, unknown)) {
        return {};
    }
    return error ? error : std::make_error_code(std::errc::not_a_directory);
}

} // namespace platform
