#include "platform/clock.h"

namespace platform {

std::time_t currentTime() {
    return std::time(nullptr);
}

std::size_t formatLocalTime(std::time_t time, char* text, std::size_t capacity) {
    std::tm local{};
    if (localtime_r(&time, &local) == nullptr) {
        return 0;
    }
    return std::strftime(text, capacity, "%c", &local);
}

} // namespace platform
