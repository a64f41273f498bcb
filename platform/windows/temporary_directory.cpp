#include "platform/temporary_directory.h"

#include <aclapi.h>
#include <array>
#include <memory>
#include <vector>
#include <windows.h>

namespace platform {

namespace {

struct CloseTheHandle {
    using pointer = HANDLE;

    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

using OwnedHandle = std::unique_ptr<void, CloseTheHandle>;

bool hasEnded(std::uint32_t process) {
    const OwnedHandle handle(OpenProcess(SYNCHRONIZE, FALSE, process));
    if (handle == nullptr) {
        return GetLastError() == ERROR_INVALID_PARAMETER; // No process has that number.
    }
    return WaitForSingleObject(handle.get(), 0) == WAIT_OBJECT_0;
}

/// What a TOKEN_USER of this process fills; empty when it cannot be told.
std::vector<char> thisUser() {
    HANDLE token = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == 0) {
        return {};
    }
    const OwnedHandle owned(token);
    DWORD size = 0;
    GetTokenInformation(token, TokenUser, nullptr, 0, &size);
    std::vector<char> user(size);
    if (GetTokenInformation(token, TokenUser, user.data(), size, &size) == 0) {
        user.clear();
    }
    return user; // Moved, never copied: the record points into its own bytes.
}

bool belongsToThisUser(const std::filesystem::path& path) {
    const auto user = thisUser();
    std::wstring name =
        path.native(); // Some headers declare the argument as one that is written to.
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (user.empty() ||
        GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner,
                              nullptr, nullptr, nullptr, &descriptor) != ERROR_SUCCESS) {
        return false;
    }
    const auto* own = reinterpret_cast<const TOKEN_USER*>(user.data());
    const bool isOwn = EqualSid(owner, own->User.Sid) != 0;
    LocalFree(descriptor);
    return isOwn;
}

bool isRealDirectory(const std::filesystem::path& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
           (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
}

} // namespace

std::filesystem::path placeOfTemporaryFiles() {
    std::array<wchar_t, MAX_PATH + 1> place{};
    const DWORD size = GetTempPathW(static_cast<DWORD>(place.size()), place.data());
    return std::wstring(place.data(), size < place.size() ? size : 0);
}

// Directories take the rights of their parent, and the place for temporary files is the user's own.
bool createPrivateDirectory(const std::filesystem::path& directory, std::error_code& error) {
    return std::filesystem::create_directory(directory, error);
}

std::uint32_t processNumber() {
    return GetCurrentProcessId();
}

// All processes see the same numbers.
std::intptr_t holdDirectory(const std::filesystem::path& /*directory*/) {
    return -1;
}

void releaseDirectory(std::intptr_t /*hold*/) {}

bool isAbandoned(const std::filesystem::path& directory, std::uint32_t process) {
    return hasEnded(process) && isRealDirectory(directory) && belongsToThisUser(directory);
}

} // namespace platform
