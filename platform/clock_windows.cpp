#include "platform/clock.h"

namespace platform {

std::size_t formatLocalTime(std::time_t time, char* text, std::size_t capacity) {
    std::tm local{};
    if (localtime_s(&local, &time) != 0) {
        return 0;
    }
    return std::strftime(text, capacity, "%c", &local);
}

} // namespace platform
