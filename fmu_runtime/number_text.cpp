#include "fmu_runtime/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
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

} // namespace

char* writeReal(char* target, double value) noexcept {
    if (!std::isfinite(value)) {
        return writeNonFinite(target, value);
    }
    return std::to_chars(target, target + realTextSize, value, std::chars_format::scientific,
                         fractionDigits)
        .ptr;
}

} // namespace fmu_runtime
