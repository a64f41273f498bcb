#pragma once

#include <cstddef>

namespace fmu_runtime {

/// Longest text of writeReal(): sign, digit, point, sixteen digits, "e", sign, three digits.
inline constexpr std::size_t realTextSize = 24;

/// Writes `value` as C99 printf does for "%.16e" in the C locale, the same on every platform:
/// exponents of at least two digits, "inf", "-inf", "nan" and "-nan". Needs realTextSize characters
/// at `target`; returns the end of the text, which is not zero-terminated.
char* writeReal(char* target, double value) noexcept;

} // namespace fmu_runtime
