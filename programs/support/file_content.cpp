#include "programs/support/file_content.h"

#include "platform/files.h"
#include "programs/support/input_error.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace program_support {

std::string fileContent(const std::string& path) {
    const auto file = platform::nativePath(path);
    std::error_code error;
    std::ifstream stream(file, std::ios::binary);
    if (!stream || std::filesystem::is_directory(file, error)) {
        throw InputError("cannot read the file '" + path + "'; check that it exists");
    }
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace program_support
