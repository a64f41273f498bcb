#include "platform/files.h"

#include "platform/path_style.h"

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

} // namespace platform
