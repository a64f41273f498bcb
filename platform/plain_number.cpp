#include "platform/plain_number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string_view>
#include <system_error>

namespace platform {

namespace {

std::string_view withoutLeadingSpace(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
}

/// True when the first significant digit of `number`, one that no double can hold, stands before
/// the point once its exponent has moved it: then it is too large, else too small.
bool isLarge(std::string_view number, std::string_view exponentLetters) {
    const auto letter = std::min(number.find_first_of(exponentLetters), number.size());
    const std::string_view digits = number.substr(0, letter);
    const auto point = std::min(digits.find('.'), digits.size());
    const auto first = std::min(digits.find_first_not_of("0."), digits.size());
    const auto position = static_cast<long long>(point) - static_cast<long long>(first);
    long long exponent = 0;
    if (letter + 1 < number.size()) {
        const std::string_view text = number.substr(letter + 1);
        const char* begin = text.data() + (text.front() == '+' ? 1 : 0);
        const auto read = std::from_chars(begin, text.data() + text.size(), exponent);
        if (read.ec == std::errc::result_out_of_range) {
            return text.front() != '-';
        }
    }
    const long long digitWeight = exponentLetters == "pP" ? 4 : 1;
    return position * digitWeight + exponent > 0;
}

double positiveReal(std::string_view text) {
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const std::string_view number = text.substr(isHexadecimal ? 2 : 0);
    const auto format = isHexadecimal ? std::chars_format::hex : std::chars_format::general;
    double value = 0.0;
    const char* begin = number.data();
    const auto [end, error] = std::from_chars(begin, begin + number.size(), value, format);
    if (error != std::errc::result_out_of_range) {
        return error == std::errc() ? value : 0.0;
    }
    const std::string_view read = number.substr(0, static_cast<std::size_t>(end - begin));
    return isLarge(read, isHexadecimal ? "pP" : "eE") ? std::numeric_limits<double>::infinity()
                                                      : 0.0;
}

} // namespace

double realOf(const char* text) {
    std::string_view number = withoutLeadingSpace(text);
    const bool isNegative = number.starts_with('-');
    number.remove_prefix(isNegative || number.starts_with('+') ? 1 : 0);
    if (number.starts_with('-')) { // Only one sign is part of a number.
        return 0.0;
    }
    const double value = positiveReal(number);
    return isNegative ? -value : value;
}

int integerOf(const char* text) {
    const char* number = withoutLeadingSpace(text).data();
    const bool begins = *number == '-' || *number == '+' || (*number >= '0' && *number <= '9');
    // NOLINTNEXTLINE(cert-err34-c): a text that is no number counts as 0
    return begins ? std::atoi(number) : 0;
}

} // namespace platform
