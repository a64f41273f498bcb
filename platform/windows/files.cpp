#include "platform/files.h"

#include "platform/path_style.h"

#include <filesystem>
#include <system_error>
#include <windows.h>

namespace platform {

const PathStyle& nativePaths() {
    return windowsPaths;
}

std::filesystem::path nativePath(std::string_view path) {
    const int size = static_cast<int>(path.size());
    std::wstring wide(path.size(), L'\0');
    const int length = MultiByteToWideChar(CP_ACP, 0, path.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(length));
    return wide;
}

std::string narrowPath(const std::filesystem::path& path) {
    const std::wstring& wide = path.native();
    const int size = static_cast<int>(wide.size());
    const int length =
        WideCharToMultiByte(CP_ACP, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), size, narrow.data(), length, nullptr, nullptr);
    return narrow;
}

namespace {

/// In the terms that all systems share, where they have one.
std::error_code errorOf(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
        return std::make_error_code(std::errc::no_such_file_or_directory);
    case ERROR_ACCESS_DENIED:
        return std::make_error_code(std::errc::permission_denied);
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return std::make_error_code(std::errc::device_or_resource_busy);
    default:
        return {static_cast<int>(error), std::system_category()};
    }
}

} // namespace

std::error_code readingFault(const std::filesystem::path& file) {
    std::error_code unknown;
    if (std::filesystem::is_directory(file, unknown)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    const HANDLE handle = CreateFileW(file.c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return errorOf(GetLastError());
    }
    CloseHandle(handle);
    return {};
}

bool isSamePath(const std::filesystem::path& first, const std::filesystem::path& second) {
    constexpr BOOL ignoreCase = TRUE;
    return CompareStringOrdinal(first.c_str(), -1, second.c_str(), -1, ignoreCase) == CSTR_EQUAL;
}

} // namespace platform
