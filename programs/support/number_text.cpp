#include "programs/support/number_text.h"

#include "programs/support/input_error.h"

#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace program_support {

std::optional<double> numberIn(std::string_view text) {
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    double value = 0.0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || rest != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

double parseNumber(std::string_view text, std::string_view what) {
    if (const auto value = numberIn(text)) {
        return *value;
    }
    throw InputError(std::string(what) + " '" + std::string(text) +
                     "' is not a finite number; write it like 0.5 or 1e-3");
}

std::string shortNumber(double value) {
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

std::string plainNumber(double value) {
    constexpr double smallest = 1e-4;
    constexpr double largest = 1e15;
    const double size = std::abs(value);
    if (value != 0.0 && (size < smallest || size >= largest)) {
        return shortNumber(value);
    }
    std::array<char, 32> text{};
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    return {text.data(), result.ptr};
}

std::string roundedNumber(double value, int digits) {
    std::array<char, 64> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value,
                                      std::chars_format::general, digits);
    return {text.data(), result.ptr};
}

} // namespace program_support
