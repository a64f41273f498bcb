#pragma once

#include <cstddef>

namespace platform {

/// False where compilers disagree on what a long double is: there the platform's C library takes it
/// for a double, and so has to be taken what foreign code passes.
extern const bool callersHaveLongDouble;

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
