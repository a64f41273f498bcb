#pragma once

#include <filesystem>
#include <string>

namespace platform {

/// Windows says that a library was not found, but not which one: it may be one that `library`
/// needs. Answers " (NAME is missing)" for the first that `library` itself needs and that is
/// neither beside it nor where Windows looks; an empty text when there is none. Windows only.
std::string missingImport(const std::filesystem::path& library);

} // namespace platform
