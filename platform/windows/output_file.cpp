#include "platform/output_file.h"

#include "platform/windows/native_handle.h"

#include <utility>
#include <windows.h>

namespace platform {

OutputFile::OutputFile(const char* path)
    : handle_(reinterpret_cast<std::intptr_t>(
          CreateFileA(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                      nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr))) {
    error_ = isOpen() ? 0 : static_cast<int>(GetLastError());
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

} // namespace platform
