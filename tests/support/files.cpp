#include "support/files.h"

#include "platform/files.h"
#include "platform/shared_library.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace test_support {

namespace fs = std::filesystem;

TemporaryDirectory::TemporaryDirectory(const fs::path& name)
    : path_(root_ / (name.empty() ? fs::path("run") : name)) {
    fs::create_directories(path_);
}

std::string readFile(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void writeFile(const fs::path& file, std::string_view content) {
    std::ofstream stream(file, std::ios::binary);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
}

std::vector<std::string> lines(std::string_view text) {
    std::vector<std::string> result;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        result.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return result;
}

std::string narrow(const fs::path& path) {
    return platform::narrowPath(path);
}

fs::path fmuPath(std::string_view name) {
    return fs::path(BUILD_DIRECTORY "/fmus") / (std::string(name) + ".fmu");
}

fs::path libraryPath(std::string_view name) {
    return fs::path(BUILD_DIRECTORY "/" LIBRARY_FOLDER) /
           (std::string(name) + platform::SharedLibrary::suffix());
}

} // namespace test_support
