#pragma once

namespace platform {

/// The number that a text begins with, as atof() and atoi() read it in the C locale, whatever
/// locale the host has set: after white space and a sign the longest prefix that is a number
/// (decimal or hexadecimal, "inf", "nan"), 0 when there is none.
double realOf(const char* text);

/// As realOf(), for a decimal integer.
int integerOf(const char* text);

} // namespace platform
