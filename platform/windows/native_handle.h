#pragma once

#include <bit>
#include <cstdint>
#include <windows.h>

namespace platform {

/// A handle of Windows out of a class whose header knows no Windows; INVALID_HANDLE_VALUE is -1 there.
inline HANDLE native(std::intptr_t handle) {
    return std::bit_cast<HANDLE>(handle);
}

} // namespace platform
