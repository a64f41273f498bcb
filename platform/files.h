#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

/// Files and directories whose names are narrow texts in the code page of the process.
namespace platform {

/// A narrow path as the file system library takes it. On Windows the text is in the code page of
/// the process, which the standard conversion would not honour with every compiler.
std::filesystem::path nativePath(std::string_view path);

/// The reverse of nativePath().
std::string narrowPath(const std::filesystem::path& path);

/// Whether two absolute, normalised paths name one file where neither is there yet. On Windows the
/// case of letters makes no difference.
bool isSamePath(const std::filesystem::path& first, const std::filesystem::path& second);

/// The process's current directory; `error` says why when it cannot be told.
std::string currentDirectory(std::error_code& error);

/// Why there is no file at that path that can be read: none is there, a directory is, the rights or
/// another program forbid it... No error when there is one, or something else that can be read from.
std::error_code readingFault(const std::filesystem::path& file);

/// Makes `directory` and its missing parents. Answers why it is no directory afterwards, no error
/// when it is one.
std::error_code createDirectories(std::string_view directory);

} // namespace platform
