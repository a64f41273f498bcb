#include "platform/clock.h"

#include <cstdint>
#include <windows.h>

namespace platform {

// The C library's time() may look for the time zone anew with every call.
std::time_t currentTime() {
    constexpr std::uint64_t perSecond = 10'000'000; // A file time counts 100 ns since 1601.
    constexpr std::uint64_t from1601To1970 = 11'644'473'600;
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    const std::uint64_t count =
        (std::uint64_t{now.dwHighDateTime} << 32U) | std::uint64_t{now.dwLowDateTime};
    return static_cast<std::time_t>(count / perSecond - from1601To1970);
}

std::size_t formatLocalTime(std::time_t time, char* text, std::size_t capacity) {
    std::tm local{};
    if (localtime_s(&local, &time) != 0) {
        return 0;
    }
    return std::strftime(text, capacity, "%c", &local);
}

} // namespace platform
