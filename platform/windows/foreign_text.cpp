#include "platform/foreign_text.h"

#include <windows.h>

namespace platform {

const bool callersHaveLongDouble = false;

bool readForeignMemory(const char* source, char* target, std::size_t size) {
    SIZE_T done = 0;
    return ReadProcessMemory(GetCurrentProcess(), source, target, size, &done) != 0 && done == size;
}

} // namespace platform
