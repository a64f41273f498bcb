#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace program_support {

/// The finite number that `text` is as a whole, in decimal or exponent form with a point, whatever
/// the locale. Nothing for everything else: blanks, a rest, inf, nan, a number no double can hold.
std::optional<double> numberIn(std::string_view text);

/// Like numberIn(), but throws InputError "<what> 'text' is not a finite number; ..." instead of
/// answering nothing. `what` names the place of the text, such as an option.
double parseNumber(std::string_view text, std::string_view what);

/// The shortest text that reads back as exactly `value`.
std::string shortNumber(double value);

/// `value` with at most `digits` significant digits, for people.
std::string roundedNumber(double value, int digits);

} // namespace program_support
