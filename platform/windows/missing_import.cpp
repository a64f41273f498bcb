#include "platform/windows/missing_import.h"

#include "platform/library_file.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <windows.h>

namespace platform {

namespace {

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool isFound(const std::filesystem::path& library) {
    const HMODULE handle = LoadLibraryExW(library.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    return handle != nullptr && FreeLibrary(handle) != 0;
}

/// True for the name of a file and nothing else: no path, which could lead anywhere, and nothing
/// that a terminal would obey.
bool isPlainName(const std::string& name) {
    return !name.empty() && name.find_first_of("/\\:") == std::string::npos &&
           std::ranges::all_of(name, [](char c) { return c >= ' ' && c < '\x7f'; });
}

} // namespace

std::string missingImport(const std::filesystem::path& library) {
    for (const std::string& name : importsOfWindowsLibrary(contentOf(library))) {
        if (!isPlainName(name)) {
            return " (the names of the libraries that it needs are damaged)";
        }
        if (!isFound(library.parent_path() / name) && !isFound(name)) {
            return " (" + name + " is missing)";
        }
    }
    return {};
}

} // namespace platform
