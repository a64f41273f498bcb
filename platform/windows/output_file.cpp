#include "platform/output_file.h"

#include "platform/windows/native_handle.h"

#include <optional>
#include <system_error>
#include <utility>
#include <windows.h>

namespace platform {

namespace {

/// The file that `handle` has open, as the system counts files; nothing for what is no file.
std::optional<BY_HANDLE_FILE_INFORMATION> identityOf(HANDLE handle) {
    BY_HANDLE_FILE_INFORMATION information;
    const bool isTold = handle != INVALID_HANDLE_VALUE && GetFileType(handle) == FILE_TYPE_DISK &&
                        GetFileInformationByHandle(handle, &information) != 0;
    return isTold ? std::optional(information) : std::nullopt;
}

bool isSameFile(const BY_HANDLE_FILE_INFORMATION& first, const BY_HANDLE_FILE_INFORMATION& second) {
    return first.dwVolumeSerialNumber == second.dwVolumeSerialNumber &&
           first.nFileIndexHigh == second.nFileIndexHigh &&
           first.nFileIndexLow == second.nFileIndexLow;
}

} // namespace

// Nobody else may open it to write as long as it is open, but everybody to read.
OutputFile::OutputFile(const char* path)
    : handle_(reinterpret_cast<std::intptr_t>(CreateFileA(path, GENERIC_READ | GENERIC_WRITE,
                                                          FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                                          FILE_ATTRIBUTE_NORMAL, nullptr))) {
    const DWORD error = isOpen() ? ERROR_SUCCESS : GetLastError();
    error_ = static_cast<int>(error);
    isTaken_ = error == ERROR_SHARING_VIOLATION;
    if (isOpen()) {
        clear();
    }
}

bool OutputFile::isAt(const char* path) const {
    const HANDLE other =
        CreateFileA(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    const auto own = identityOf(native(handle_));
    const auto named = identityOf(other);
    if (other != INVALID_HANDLE_VALUE) {
        CloseHandle(other);
    }
    return own && named && isSameFile(*own, *named);
}

void OutputFile::clear() {
    if (SetFilePointerEx(native(handle_), LARGE_INTEGER{}, nullptr, FILE_BEGIN) != 0) {
        SetEndOfFile(native(handle_));
    }
}

bool OutputFile::write(std::string_view text) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(text.size());
    if (WriteFile(native(handle_), text.data(), size, &written, nullptr) != 0 && written == size) {
        return true;
    }
    const DWORD error = GetLastError();
    error_ = static_cast<int>(error != ERROR_SUCCESS ? error : ERROR_DISK_FULL);
    takeBack(written);
    return false;
}

void OutputFile::takeBack(std::size_t size) {
    LARGE_INTEGER back;
    back.QuadPart = -static_cast<LONGLONG>(size);
    if (size > 0 && SetFilePointerEx(native(handle_), back, nullptr, FILE_CURRENT) != 0) {
        SetEndOfFile(native(handle_));
    }
}

bool OutputFile::isOfUse(int error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_USER_MAPPED_FILE;
}

void OutputFile::close() {
    if (isOpen()) {
        CloseHandle(native(std::exchange(handle_, -1)));
    }
}

bool isHeld(const std::filesystem::path& file) {
    const HANDLE handle = CreateFileW(file.c_str(), GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return GetLastError() == ERROR_SHARING_VIOLATION;
    }
    CloseHandle(handle);
    return false;
}

// The system refuses to remove what is open.
void removeUnheldFile(const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::is_regular_file(std::filesystem::symlink_status(file, error))) {
        std::filesystem::remove(file, error);
    }
}

} // namespace platform
