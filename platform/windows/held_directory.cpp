#include "platform/held_directory.h"

#include "platform/files.h"
#include "platform/windows/native_handle.h"

#include <array>
#include <windows.h>

namespace platform {

namespace {

/// Opens a folder so that nobody can rename or remove it. The last flag keeps a link from being
/// followed.
std::intptr_t hold(const std::string& path, DWORD reparseFlag) {
    return reinterpret_cast<std::intptr_t>(CreateFileW(
        nativePath(path).c_str(), FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | reparseFlag, nullptr));
}

bool hasAttributes(HANDLE handle, DWORD wanted, DWORD unwanted) {
    BY_HANDLE_FILE_INFORMATION information;
    return GetFileInformationByHandle(handle, &information) != 0 &&
           (information.dwFileAttributes & wanted) == wanted &&
           (information.dwFileAttributes & unwanted) == 0;
}

} // namespace

HeldDirectory::HeldDirectory(const std::string& path) : path_(path) {
    const std::intptr_t handle = hold(path, 0);
    if (handle == -1) {
        return;
    }
    levels_.push_back(handle);
    if (!hasAttributes(native(handle), FILE_ATTRIBUTE_DIRECTORY, 0)) {
        leave(0);
    }
}

void HeldDirectory::leave(std::size_t depth) {
    while (levels_.size() > depth) {
        CloseHandle(native(levels_.back()));
        levels_.pop_back();
        if (!names_.empty()) {
            path_.resize(path_.size() - names_.back().size() - 1);
            names_.pop_back();
        }
    }
}

bool HeldDirectory::descend(const std::string& name) {
    const std::string path = path_ + '\\' + name;
    CreateDirectoryW(nativePath(path).c_str(), nullptr);
    const std::intptr_t handle = hold(path, FILE_FLAG_OPEN_REPARSE_POINT);
    if (handle == -1) {
        return false;
    }
    if (!hasAttributes(native(handle), FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_REPARSE_POINT)) {
        CloseHandle(native(handle));
        return false;
    }
    levels_.push_back(handle);
    names_.push_back(name);
    path_ = path;
    return true;
}

void HeldDirectory::remove(const std::string& name) {
    DeleteFileW(nativePath(path_ + '\\' + name).c_str());
}

OutputFile HeldDirectory::create(const std::string& name) {
    remove(name);
    const HANDLE handle =
        CreateFileW(nativePath(path_ + '\\' + name).c_str(), GENERIC_READ | GENERIC_WRITE,
                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, CREATE_NEW,
                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    const DWORD error = handle == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
    return {reinterpret_cast<std::intptr_t>(handle), static_cast<int>(error)};
}

bool HeldDirectory::read(const std::string& name,
                         const std::function<bool(std::string_view)>& sink) {
    const HANDLE file =
        CreateFileW(nativePath(path_ + '\\' + name).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                    OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    std::array<char, 65536> block;
    DWORD size = 1;
    bool isRead = hasAttributes(file, 0, FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT);
    while (isRead && size > 0) {
        isRead =
            ReadFile(file, block.data(), static_cast<DWORD>(block.size()), &size, nullptr) != 0 &&
            sink({block.data(), size});
    }
    CloseHandle(file);
    return isRead;
}

} // namespace platform
