#include "platform/shared_library.h"

#include "platform/files.h"
#include "platform/windows/missing_import.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <system_error>
#include <utility>
#include <vector>
#include <windows.h>

namespace platform {

namespace {

std::string systemMessage(DWORD error) {
    return std::system_category().message(static_cast<int>(error));
}

template <typename Header>
bool isSameHeader(const Header& one, const Header& other) {
    return std::memcmp(&one, &other, sizeof(Header)) == 0;
}

/// False when the code at `module` is not that in `path`: the loader finds a library that it has by
/// its path, also when the file has been renamed since and another is in its place. Compared is
/// what linkers write anew for each build and the loader leaves as it is.
bool isLoadedFrom(const char* module, const std::filesystem::path& path) {
    const auto offset = reinterpret_cast<const IMAGE_DOS_HEADER*>(module)->e_lfanew;
    const auto& loaded = *reinterpret_cast<const IMAGE_NT_HEADERS*>(module + offset);
    const IMAGE_SECTION_HEADER* sections = IMAGE_FIRST_SECTION(&loaded);
    IMAGE_NT_HEADERS inFile{};
    std::vector<IMAGE_SECTION_HEADER> sectionsInFile(loaded.FileHeader.NumberOfSections);
    const auto sectionBytes =
        static_cast<std::streamsize>(sectionsInFile.size() * sizeof(IMAGE_SECTION_HEADER));
    std::ifstream file(path, std::ios::binary);
    file.seekg(offset);
    file.read(reinterpret_cast<char*>(&inFile), sizeof(inFile));
    file.seekg(reinterpret_cast<const char*>(sections) - module);
    file.read(reinterpret_cast<char*>(sectionsInFile.data()), sectionBytes);
    const auto& options = loaded.OptionalHeader;
    return file.good() && isSameHeader(loaded.FileHeader, inFile.FileHeader) &&
           options.CheckSum == inFile.OptionalHeader.CheckSum &&
           options.SizeOfImage == inFile.OptionalHeader.SizeOfImage &&
           std::equal(sectionsInFile.begin(), sectionsInFile.end(), sections,
                      isSameHeader<IMAGE_SECTION_HEADER>);
}

} // namespace

bool SharedLibrary::open(const std::string& path) {
    close();
    // The altered search path begins in the library's own folder instead of the program's.
    handle_ = LoadLibraryExW(nativePath(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (handle_ == nullptr) {
        const DWORD error = GetLastError();
        error_ = path + ": " + systemMessage(error);
        if (error == ERROR_MOD_NOT_FOUND) {
            error_ += missingImport(nativePath(path));
        }
    }
    return isOpen();
}

std::string SharedLibrary::boundFile() const {
    std::wstring path(32768, L'\0'); // The longest path that there can be.
    const DWORD length = isOpen() ? GetModuleFileNameW(static_cast<HMODULE>(handle_), path.data(),
                                                       static_cast<DWORD>(path.size()))
                                  : 0;
    path.resize(length);
    const bool isThere = length > 0 && isLoadedFrom(static_cast<const char*>(handle_), path);
    return narrowPath(path) + (length == 0 || isThere ? "" : " (replaced)");
}

bool SharedLibrary::close() {
    if (!isOpen() || FreeLibrary(static_cast<HMODULE>(std::exchange(handle_, nullptr))) != 0) {
        return true;
    }
    error_ = systemMessage(GetLastError());
    return false;
}

void* SharedLibrary::symbol(const char* name) {
    const FARPROC address = GetProcAddress(static_cast<HMODULE>(handle_), name);
    if (address == nullptr) {
        error_ = std::string(name) + ": " + systemMessage(GetLastError());
    }
    return reinterpret_cast<void*>(address);
}

bool SharedLibrary::isLoaded(const std::string& path) {
    return GetModuleHandleW(nativePath(path).c_str()) != nullptr;
}

const char* SharedLibrary::suffix() {
    return ".dll";
}

const char* SharedLibrary::fmiPlatform() {
    return "win64";
}

} // namespace platform
