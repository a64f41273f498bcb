#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Numbers of a model description. As in the C library's own conversions, blanks before a number
/// and whatever follows it are ignored; the locale has no part in it.
namespace fmi_import {

/// "1e400" is infinite, "INF" and "NaN" are read too. Nothing when `text` does not begin with a
/// number.
std::optional<double> realFromText(std::string_view text);

/// Nothing when `text` does not begin with a whole number or that does not fit 32 bits.
std::optional<int> integerFromText(std::string_view text);

/// A value reference or index; whole numbers beyond 32 bits keep their lowest 32, negative ones
/// count from the end, as C's conversion to unsigned has it.
std::optional<std::uint32_t> unsignedFromText(std::string_view text);

/// "true", "false", "1" or "0".
std::optional<bool> booleanFromText(std::string_view text);

} // namespace fmi_import
