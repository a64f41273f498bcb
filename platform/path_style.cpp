#include "platform/path_style.h"

#include <algorithm>

namespace platform {

namespace {

/// Position of the last separator in `path`, or npos.
std::size_t lastSeparator(const PathStyle& style, std::string_view path) {
    return path.find_last_of(style.separators);
}

} // namespace

const PathStyle windowsPaths{'\\', "/\\", 260};
const PathStyle posixPaths{'/', "/", 4096};

bool isAbsolute(const PathStyle& style, std::string_view path) {
    if (style.separator == '\\') {
        const bool isNetworkPath = path.find_first_not_of(style.separators) > 1 && path.size() > 1;
        return isNetworkPath || (path.size() > 1 && path[1] == ':');
    }
    return path.starts_with('/');
}

std::string_view directoryOf(const PathStyle& style, std::string_view path) {
    return path.substr(0, std::min(lastSeparator(style, path), path.size()));
}

std::string_view fileNameOf(const PathStyle& style, std::string_view path) {
    const auto position = lastSeparator(style, path);
    return position == std::string_view::npos ? path : path.substr(position + 1);
}

std::string withTrailingSeparator(const PathStyle& style, std::string_view directory) {
    std::string result(directory);
    if (!result.empty() && style.separators.find(result.back()) == std::string_view::npos) {
        result += style.separator;
    }
    return result;
}

std::optional<std::string> absoluteDirectory(const PathStyle& style,
                                             std::string_view currentDirectory,
                                             std::string_view directory) {
    std::string result;
    if (!isAbsolute(style, directory)) {
        result.append(currentDirectory).append(1, style.separator);
    }
    result += directory;
    if (result.size() + 1 > style.capacity) {
        return std::nullopt;
    }
    std::ranges::replace_if(
        result, [&](char c) { return style.separators.find(c) != std::string_view::npos; },
        style.separator);
    return result;
}

} // namespace platform
