#include "fmu_runtime/log_message.h"

#include "fmu_runtime/number_text.h"

#include <array>
#include <charconv>
#include <limits>

namespace fmu_runtime {

LogMessage& LogMessage::add(double value) noexcept {
    std::array<char, realTextSize> text;
    return add({text.data(), writeReal(text.data(), value)});
}

LogMessage& LogMessage::add(std::int32_t value) noexcept {
    constexpr std::size_t longest = std::numeric_limits<std::int32_t>::digits10 + 2;
    std::array<char, longest> text;
    return add({text.data(), std::to_chars(text.data(), text.data() + longest, value).ptr});
}

} // namespace fmu_runtime
