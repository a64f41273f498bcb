#pragma once

#include <cstdint>
#include <optional>

namespace fmu_runtime {

/// A positive number rounded to 17 significant digits, enough to restore any double.
struct DecimalDigits {
    std::uint64_t digits; ///< 17 of them: the number is digits * 10^(exponent - 16).
    int exponent;         ///< Of the first digit.
};

/// The digits of a finite, positive `value`, rounded to nearest. Nothing when `value` lies so close
/// to the middle between two results that it takes more arithmetic than this to decide, which is
/// the case for about one number in a hundred.
///
/// Four fifths of the work of a communication step would be the formatting of numbers if
/// std::to_chars did it: it computes exactly, with integers of any size. One multiplication of 64
/// bits by 64 decides nearly every number, and knows when it does not.
std::optional<DecimalDigits> decimalDigits(double value) noexcept;

} // namespace fmu_runtime
