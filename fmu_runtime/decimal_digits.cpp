#include "fmu_runtime/decimal_digits.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <limits>

namespace fmu_runtime {

namespace {

constexpr int digitCount = 17;
constexpr std::uint64_t tooLarge = 100'000'000'000'000'000; // The first number of 18 digits.

/// significand * 2^exponent, with the highest bit of the significand set.
struct Binary64 {
    std::uint64_t significand;
    int exponent;
};

/// The same with a longer significand, its highest part first. What does not fit is cut off.
struct LongBinary {
    std::array<std::uint32_t, 5> parts{0x80000000U};
    int exponent = -159; ///< Together 1.

    constexpr void multiplyByTen() {
        std::uint64_t carry = 0;
        for (std::size_t i = parts.size(); i-- > 0;) {
            carry += std::uint64_t{parts[i]} * 10;
            parts[i] = static_cast<std::uint32_t>(carry);
            carry >>= 32U;
        }
        std::shift_right(parts.begin(), parts.end(), 1);
        parts[0] = static_cast<std::uint32_t>(carry);
        exponent += 32;
        normalise();
    }

    constexpr void divideByTen() {
        std::uint64_t rest = 0;
        for (std::uint32_t& part : parts) {
            rest = rest << 32U | part;
            part = static_cast<std::uint32_t>(rest / 10);
            rest %= 10;
        }
        normalise();
    }

    constexpr void normalise() {
        const int shift = std::countl_zero(parts[0]);
        std::uint32_t fromBelow = 0;
        for (std::size_t i = parts.size(); i-- > 0;) {
            const std::uint64_t shifted = std::uint64_t{parts[i]} << shift;
            parts[i] = static_cast<std::uint32_t>(shifted) | fromBelow;
            fromBelow = static_cast<std::uint32_t>(shifted >> 32U);
        }
        exponent -= shift;
    }

    [[nodiscard]] constexpr Binary64 cut() const {
        return {std::uint64_t{parts[0]} << 32U | parts[1], exponent + 96};
    }
};

// What brings the largest and the smallest double to 17 digits before the point.
constexpr int smallestPower = -292;
constexpr int largestPower = 340;

/// The powers of ten from smallestPower on, cut off after 64 bits.
constexpr auto powersOfTen = [] {
    std::array<Binary64, largestPower - smallestPower + 1> powers{};
    LongBinary power;
    for (int n = 0; n <= largestPower; ++n, power.multiplyByTen()) {
        powers[static_cast<std::size_t>(n - smallestPower)] = power.cut();
    }
    power = {};
    for (int n = 0; n >= smallestPower; --n, power.divideByTen()) {
        powers[static_cast<std::size_t>(n - smallestPower)] = power.cut();
    }
    return powers;
}();

Binary64 binary64(double value) {
    constexpr int fractionBits = std::numeric_limits<double>::digits - 1;
    constexpr std::uint64_t hiddenBit = std::uint64_t{1} << fractionBits;
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const int biased = static_cast<int>(bits >> fractionBits);
    const std::uint64_t fraction = bits & (hiddenBit - 1);
    // Subnormal numbers have no hidden bit and the exponent of the smallest normal ones.
    const std::uint64_t significand = biased == 0 ? fraction : fraction | hiddenBit;
    const int shift = std::countl_zero(significand);
    return {significand << shift, std::max(biased, 1) - 1075 - shift};
}

/// The upper half of the product.
std::uint64_t multiplyHigh(std::uint64_t a, std::uint64_t b) {
    constexpr std::uint64_t lower = 0xFFFFFFFF;
    const std::uint64_t first = (a & lower) * (b >> 32U) + ((a & lower) * (b & lower) >> 32U);
    const std::uint64_t second = (a >> 32U) * (b & lower) + (first & lower);
    return (a >> 32U) * (b >> 32U) + (first >> 32U) + (second >> 32U);
}

/// A number with its point behind the lowest of some bits: value = scaled / 2^fractionBits.
struct FixedPoint {
    std::uint64_t scaled;
    int fractionBits;

    [[nodiscard]] std::uint64_t whole() const { return scaled >> fractionBits; }
};

/// `value` times ten to the `power`. Cutting off the power's and the product's low bits makes it
/// less than three units of `scaled` too small.
FixedPoint timesPowerOfTen(const Binary64& value, int power) {
    const Binary64& factor = powersOfTen[static_cast<std::size_t>(power - smallestPower)];
    return {multiplyHigh(value.significand, factor.significand),
            -(value.exponent + factor.exponent + 64)};
}

/// The nearest whole number, unless the number's error may decide which one that is.
std::optional<std::uint64_t> rounded(const FixedPoint& number) {
    constexpr std::uint64_t error = 3;
    const std::uint64_t half = std::uint64_t{1} << (number.fractionBits - 1);
    const std::uint64_t fraction = number.scaled & (2 * half - 1);
    if (fraction <= half && fraction + error > half) {
        return std::nullopt;
    }
    return number.whole() + (fraction > half ? 1 : 0);
}

/// The largest whole number not above n * log10(2), for every exponent n of a double.
int floorLog10OfPowerOfTwo(int n) {
    return n * 78913 >> 18;
}

} // namespace

std::optional<DecimalDigits> decimalDigits(double value) noexcept {
    const Binary64 binary = binary64(value);
    int exponent = floorLog10OfPowerOfTwo(binary.exponent + 63);
    FixedPoint number = timesPowerOfTen(binary, digitCount - 1 - exponent);
    if (number.whole() >= tooLarge) { // The number is ten or more times that power of two.
        ++exponent;
        number = timesPowerOfTen(binary, digitCount - 1 - exponent);
    }
    const auto digits = rounded(number);
    if (!digits) {
        return std::nullopt;
    }
    return *digits == tooLarge ? DecimalDigits{tooLarge / 10, exponent + 1}
                               : DecimalDigits{*digits, exponent};
}

} // namespace fmu_runtime
