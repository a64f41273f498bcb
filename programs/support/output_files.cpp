#include "programs/support/output_files.h"

#include "platform/files.h"
#include "platform/output_file.h"
#include "programs/support/input_error.h"

#include <stdexcept>

namespace program_support {

namespace fs = std::filesystem;

namespace {

/// Why nothing may be written at that place; empty when it may.
std::string obstacleAt(const fs::path& file) {
    std::error_code error;
    const bool isLink = fs::is_symlink(fs::symlink_status(file, error));
    switch (fs::status(file, error).type()) {
    case fs::file_type::not_found:
        return isLink ? "it is a link to a file that is not there" : "";
    case fs::file_type::fifo:
        return "it is a pipe, not a file";
    case fs::file_type::socket:
    case fs::file_type::block:
        return "it is not a file";
    default:
        return "";
    }
}

/// `reason` ends in a remedy, or in ";".
std::string problemWith(const std::string& path, const std::string& what, const std::string& reason,
                        const std::string& option) {
    return "cannot write the " + what + " '" + path + "': " + reason + " choose another by " +
           option;
}

std::string problemWith(const std::string& path, const std::string& what,
                        const platform::OutputFile& file, const std::string& option) {
    return problemWith(path, what, file.lastError() + "; " + file.remedy() + ", or", option);
}

void requireNoObstacle(const std::string& path, const std::string& what,
                       const std::string& option) {
    const auto obstacle = obstacleAt(platform::nativePath(path));
    if (!obstacle.empty()) {
        throw std::runtime_error(problemWith(path, what, obstacle + ";", option));
    }
}

} // namespace

void clearOutputFile(const std::string& path, const std::string& what, const std::string& option) {
    requireNoObstacle(path, what, option);
    std::error_code unknown;
    if (fs::is_directory(platform::nativePath(path), unknown)) { // Windows says "access denied".
        throw InputError(problemWith(path, what, "it is a directory;", option));
    }
    platform::OutputFile file(path.c_str());
    if (!file.isOpen()) {
        throw InputError(problemWith(path, what, file, option));
    }
    file.close();
    removeFormerFile(platform::nativePath(path));
}

void removeFormerFile(const fs::path& file) {
    platform::removeUnheldFile(file);
}

void writeOutputFile(const std::string& path, std::string_view content, const std::string& what,
                     const std::string& option) {
    requireNoObstacle(path, what, option);
    platform::OutputFile file(path.c_str());
    if (!file.isOpen() || !file.write(content)) {
        throw std::runtime_error(problemWith(path, what, file, option));
    }
}

} // namespace program_support
