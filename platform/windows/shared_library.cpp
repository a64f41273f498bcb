#include "platform/shared_library.h"

#include "platform/files.h"
#include "platform/windows/missing_import.h"

#include <system_error>
#include <utility>
#include <windows.h>

namespace platform {

namespace {

std::string systemMessage(DWORD error) {
    return std::system_category().message(static_cast<int>(error));
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
    return narrowPath(path.substr(0, length));
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

const char* SharedLibrary::suffix() {
    return ".dll";
}

const char* SharedLibrary::fmiPlatform() {
    return "win64";
}

} // namespace platform
