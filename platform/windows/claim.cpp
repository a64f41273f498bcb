#include "platform/claim.h"

#include "platform/files.h"
#include "platform/temporary_directory.h"

#include <functional>
#include <utility>
#include <windows.h>

namespace platform {

void Claim::release() {
    if (handle_ != -1) {
        CloseHandle(reinterpret_cast<HANDLE>(std::exchange(handle_, -1)));
    }
}

// Opened to make files in it, which nobody else may do by a handle of the directory meanwhile; files
// are made by their paths, to which that means nothing.
Claim claimDirectory(const std::string& directory) {
    const HANDLE handle = CreateFileW(nativePath(directory).c_str(), FILE_ADD_FILE, FILE_SHARE_READ,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    const bool isTaken =
        handle == INVALID_HANDLE_VALUE && GetLastError() == ERROR_SHARING_VIOLATION;
    return {reinterpret_cast<std::intptr_t>(handle), isTaken};
}

// A nameless object would be no claim, and names belong to the session: the process's number is in
// this one.
Claim claimInProcess(std::string_view name) {
    const std::wstring objectName = L"Local\\fmi_tools_" + std::to_wstring(processNumber()) + L"_" +
                                    std::to_wstring(std::hash<std::string_view>()(name));
    const HANDLE handle = CreateMutexW(nullptr, FALSE, objectName.c_str());
    const bool isTaken = handle != nullptr && GetLastError() == ERROR_ALREADY_EXISTS;
    Claim claim(handle == nullptr ? -1 : reinterpret_cast<std::intptr_t>(handle), isTaken);
    if (isTaken) {
        claim.release();
    }
    return claim;
}

} // namespace platform
