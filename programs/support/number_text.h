#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace program_support {

/// The finite number that `text` is as a whole, in decimal or exponent form with a point, whatever
/// the locale. Nothing for everything else: blanks, a rest, inf, nan, a number no double can hold.
std::optional<double> numberIn(std::string_view text);

/// As numberIn(); `what` names the place of the text, such as an option.
///
/// @throws InputError "<what> 'text' is not a finite number; ..." where that answers nothing.
double parseNumber(std::string_view text, std::string_view what);

/// The shortest text that reads back as exactly `value`.
std::string shortNumber(double value);

/// The fewest digits that read back as exactly `value`, with an exponent only where many zeros would
/// hide them.
std::string plainNumber(double value);

/// `value` with at most `digits` significant digits, for people.
std::string roundedNumber(double value, int digits);

} // namespace program_support
