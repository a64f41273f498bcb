#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// How a platform writes paths. Both styles are compiled everywhere and are pure rules about text,
/// so that each platform's rules are tested on the other too.
struct PathStyle {
    char separator;              ///< Joins directory and name.
    std::string_view separators; ///< Every character that ends a directory.
    std::size_t capacity;        ///< Longest path including the terminating zero.
};

extern const PathStyle windowsPaths; ///< Drive letters, "\" and "/", 260 characters.
extern const PathStyle posixPaths;   ///< "/", 4096 characters.

/// The style of the platform that this was compiled for.
const PathStyle& nativePaths();

/// True when `path` does not depend on the current directory: its second character is ":" or it
/// begins with two separators, as network paths do (Windows), or its first is "/" (POSIX).
bool isAbsolute(const PathStyle& style, std::string_view path);

/// The text before the last separator, the whole text when there is none.
std::string_view directoryOf(const PathStyle& style, std::string_view path);

/// The text after the last separator, the whole text when there is none.
std::string_view fileNameOf(const PathStyle& style, std::string_view path);

/// `directory` ended by a separator; unchanged when it is empty or already ends with one.
std::string withTrailingSeparator(const PathStyle& style, std::string_view directory);

/// `directory` made absolute by putting `currentDirectory` before it where needed, every separator
/// written the style's own way. Nothing when the result does not fit the style's capacity.
std::optional<std::string> absoluteDirectory(const PathStyle& style,
                                             std::string_view currentDirectory,
                                             std::string_view directory);

} // namespace platform
