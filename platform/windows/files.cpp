#include "platform/files.h"

#include "platform/path_style.h"

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

bool isSamePath(const std::filesystem::path& first, const std::filesystem::path& second) {
    constexpr BOOL ignoreCase = TRUE;
    return CompareStringOrdinal(first.c_str(), -1, second.c_str(), -1, ignoreCase) == CSTR_EQUAL;
}

} // namespace platform
