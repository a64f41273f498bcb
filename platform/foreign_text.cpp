#include "platform/foreign_text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace platform {

namespace {

constexpr std::size_t pageSize = 4096;

} // namespace

std::ptrdiff_t copyForeignText(const char* text, char* target, std::size_t capacity) {
    std::size_t length = 0;
    while (length < capacity) {
        // A text may end right before memory that cannot be read, so no read crosses a page.
        const auto address = reinterpret_cast<std::uintptr_t>(text + length);
        const std::size_t chunk = std::min(capacity - length, pageSize - address % pageSize);
        if (!readForeignMemory(text + length, target + length, chunk)) {
            return -1;
        }
        if (const void* end = std::memchr(target + length, '\0', chunk)) {
            return static_cast<const char*>(end) - target;
        }
        length += chunk;
    }
    return static_cast<std::ptrdiff_t>(length);
}

} // namespace platform
