#pragma once

#include <cstddef>

namespace platform {

/// Copies `size` bytes through the operating system, which answers false where a plain read of
/// memory that is not there would end the process.
bool readForeignMemory(const char* source, char* target, std::size_t size);

/// Copies a zero-terminated text from a pointer that may be wild: one that foreign code handed over
/// and that cannot be trusted to point at memory at all.
///
/// At most `capacity` characters are copied, without a terminating zero. Returns their number, or
/// -1 when the memory cannot be read.
std::ptrdiff_t copyForeignText(const char* text, char* target, std::size_t capacity);

} // namespace platform
