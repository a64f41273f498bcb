#pragma once

#include <cstddef>
#include <ctime>

namespace platform {

/// The time of day, without a call into the operating system: every log line asks for it.
std::time_t currentTime();

/// Writes `time` as local time in the locale's own form (strftime "%c") into `text`. Returns its
/// length, 0 when it cannot be told or does not fit.
std::size_t formatLocalTime(std::time_t time, char* text, std::size_t capacity);

} // namespace platform
