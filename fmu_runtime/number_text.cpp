#include "fmu_runtime/number_text.h"

#include "fmu_runtime/decimal_digits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace fmu_runtime {

namespace {

constexpr int fractionDigits = 16; // With the first digit enough to restore any double.

// Libraries spell non-finite numbers in different ways.
char* writeNonFinite(char* target, double value) noexcept {
    using namespace std::string_view_literals;
    const auto word = std::isnan(value) ? "nan"sv : "inf"sv;
    if (std::signbit(value)) {
        *target++ = '-';
    }
    return std::ranges::copy(word, target).out;
}

char* writeExponent(char* target, int exponent) noexcept {
    *target++ = 'e';
    *target++ = exponent < 0 ? '-' : '+';
    const int size = std::abs(exponent);
    if (size < 10) {
        *target++ = '0';
    }
    return std::to_chars(target, target + 3, size).ptr;
}

void writeEightDigits(char* target, std::uint32_t number) noexcept {
    for (int i = 8; i-- > 0; number /= 10) {
        target[i] = static_cast<char>('0' + number % 10);
    }
}

char* writeDigits(char* target, const DecimalDigits& number) noexcept {
    constexpr std::uint64_t eightDigits = 100'000'000;
    const std::uint64_t upper = number.digits / eightDigits;
    target[0] = static_cast<char>('0' + upper / eightDigits);
    target[1] = '.';
    writeEightDigits(target + 2, static_cast<std::uint32_t>(upper % eightDigits));
    writeEightDigits(target + 10, static_cast<std::uint32_t>(number.digits % eightDigits));
    return writeExponent(target + 2 + fractionDigits, number.exponent);
}

} // namespace

char* writeReal(char* target, double value) noexcept {
    if (!std::isfinite(value)) {
        return writeNonFinite(target, value);
    }
    const auto number = value != 0.0 ? decimalDigits(std::abs(value)) : std::nullopt;
    if (number) {
        if (value < 0.0) {
            *target++ = '-';
        }
        return writeDigits(target, *number);
    }
    return std::to_chars(target, target + realTextSize, value, std::chars_format::scientific,
                         fractionDigits)
        .ptr;
}

} // namespace fmu_runtime
