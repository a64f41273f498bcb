#include "platform/program_path.h"

#include <filesystem>
#include <system_error>

namespace platform {

std::string programPath() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

} // namespace platform
