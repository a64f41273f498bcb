#include "platform/child_process.h"

#include "platform/files.h"

#include <cstdlib>
#include <sstream>

namespace platform {

namespace fs = std::filesystem;

namespace {

bool isProgram(const fs::path& file) {
    constexpr auto executable =
        fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    std::error_code error;
    const auto status = fs::status(file, error);
    return fs::is_regular_file(status) && (status.permissions() & executable) != fs::perms::none;
}

/// Windows takes entries in quotes.
std::string withoutQuotes(std::string text) {
    std::erase(text, '"');
    return text;
}

} // namespace

std::optional<std::string> findProgram(std::string_view name) {
    const char* places = std::getenv("PATH");
    std::istringstream entries(places != nullptr ? places : "");
    for (std::string entry; std::getline(entries, entry, programPlaces.pathSeparator);) {
        const auto file =
            nativePath(withoutQuotes(entry)) / (std::string(name) + programPlaces.suffix);
        if (file.is_absolute() && isProgram(file)) {
            return narrowPath(file);
        }
    }
    return std::nullopt;
}

} // namespace platform
