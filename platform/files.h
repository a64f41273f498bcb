#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// Files and directories whose names are narrow texts in the code page of the process.
namespace platform {

/// A narrow path as the file system library takes it. On Windows the text is in the code page of
/// the process, which the standard conversion would not honour with every compiler.
std::filesystem::path nativePath(std::string_view path);

/// The reverse of nativePath().
std::string narrowPath(const std::filesystem::path& path);

/// The process's current directory; nothing when it cannot be told.
std::optional<std::string> currentDirectory();

/// Makes `directory` and its missing parents. True when it is a directory afterwards.
bool createDirectories(std::string_view directory);

} // namespace platform
