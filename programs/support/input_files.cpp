#include "programs/support/input_files.h"

#include "platform/files.h"
#include "programs/support/input_error.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>

namespace program_support {

namespace {

std::string problemWith(const std::string& path, const std::error_code& fault) {
    const std::string file = "'" + path + "'";
    if (fault == std::errc::no_such_file_or_directory || fault == std::errc::not_a_directory) {
        return "there is no file " + file + "; check its path";
    }
    if (fault == std::errc::is_a_directory) {
        return file + " is a directory, not a file; give the path of a file";
    }
    if (fault == std::errc::permission_denied) {
        return "no permission to read the file " + file + "; change its rights or give another";
    }
    if (fault == std::errc::device_or_resource_busy) {
        return "another program is using the file " + file + "; end that program";
    }
    return "cannot read the file " + file + ": " + fault.message() + "; give another";
}

std::ifstream openToRead(const std::string& path) {
    const auto file = platform::nativePath(path);
    std::ifstream stream(file, std::ios::binary);
    std::error_code unknown;
    if (stream && !std::filesystem::is_directory(file, unknown)) {
        return stream;
    }
    const auto fault = platform::readingFault(file);
    throw InputError(problemWith(path, fault ? fault : std::make_error_code(std::errc::io_error)));
}

/// What an archive ends with may be followed by a comment of 64 KiB.
bool hasEndOfArchive(std::ifstream& stream, std::streamoff size) {
    constexpr std::streamoff longestEnd = 22 + 65535;
    constexpr std::string_view mark("PK\5\6", 4);
    stream.clear();
    stream.seekg(std::max<std::streamoff>(size - longestEnd, 0));
    const std::string end{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    return end.find(mark) != std::string::npos;
}

} // namespace

std::string fileContent(const std::string& path) {
    auto stream = openToRead(path);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string textFileContent(const std::string& path) {
    std::string content = fileContent(path);
    if (const auto zero = content.find('\0'); zero != std::string::npos) {
        const auto line = 1 + std::count(content.data(), content.data() + zero, '\n');
        throw InputError("the file '" + path + "' has a zero byte in line " + std::to_string(line) +
                         "; save it as text in UTF-8");
    }
    return content;
}

void requireReadableFile(const std::string& path) {
    const auto file = platform::nativePath(path);
    std::error_code unknown;
    if (std::filesystem::is_other(file, unknown)) { // Opening a pipe would wait for its other end.
        throw InputError("'" + path + "' is a pipe or device; give the path of a file");
    }
    static_cast<void>(openToRead(path));
}

void requireArchive(const std::string& path) {
    requireReadableFile(path);
    auto stream = openToRead(path);
    std::string begin(2, '\0');
    stream.read(begin.data(), 2);
    stream.clear();
    stream.seekg(0, std::ios::end);
    const std::streamoff size = stream.tellg();
    if (size > 0 && hasEndOfArchive(stream, size)) {
        return;
    }
    const std::string file = "cannot use '" + path + "': ";
    if (size == 0) {
        throw InputError(file + "it is empty; get the FMU anew");
    }
    if (begin != "PK") {
        throw InputError(file + "it is no archive (ZIP), as each FMU is; give the path of an FMU");
    }
    throw InputError(file + "it is cut off, the end of the archive is missing; get the FMU anew");
}

} // namespace program_support
