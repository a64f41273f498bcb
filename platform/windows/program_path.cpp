#include "platform/program_path.h"

#include <windows.h>

namespace platform {

std::string programPath() {
    std::string path(32768, '\0'); // the longest path that Windows knows
    const DWORD length = GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
    path.resize(length < path.size() ? length : 0);
    return path;
}

} // namespace platform
