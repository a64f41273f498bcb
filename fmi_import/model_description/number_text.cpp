#include "fmi_import/model_description/number_text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace fmi_import {

namespace {

std::string_view withoutLeadingBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    return text;
}

template <typename Number>
std::from_chars_result readNumber(std::string_view text, Number& number) {
    return std::from_chars(text.data(), text.data() + text.size(), number);
}

/// Value of a number that a double cannot hold: zero where its exponent is negative or it has only
/// zeros before the point, otherwise infinite.
double beyondRange(std::string_view text) {
    const std::string_view number = text.substr(text.starts_with('-') ? 1 : 0);
    const auto exponent = number.find_first_of("eE");
    const bool tiny = exponent != std::string_view::npos
                          ? number.substr(exponent + 1).starts_with('-')
                          : number.find_first_not_of('0') == number.find('.');
    const double size = tiny ? 0.0 : std::numeric_limits<double>::infinity();
    return text.starts_with('-') ? -size : size;
}

} // namespace

std::optional<double> realFromText(std::string_view text) {
    text = withoutLeadingBlanks(text);
    double number = 0.0;
    const auto [end, error] = readNumber(text, number);
    if (error == std::errc::result_out_of_range) {
        return beyondRange(text);
    }
    return error == std::errc() ? std::optional(number) : std::nullopt;
}

std::optional<int> integerFromText(std::string_view text) {
    int number = 0;
    return readNumber(withoutLeadingBlanks(text), number).ec == std::errc() ? std::optional(number)
                                                                            : std::nullopt;
}

std::optional<std::uint32_t> unsignedFromText(std::string_view text) {
    std::int64_t number = 0;
    return readNumber(withoutLeadingBlanks(text), number).ec == std::errc()
               ? std::optional(static_cast<std::uint32_t>(number))
               : std::nullopt;
}

std::optional<bool> booleanFromText(std::string_view text) {
    if (text == "true" || text == "1") {
        return true;
    }
    return text == "false" || text == "0" ? std::optional(false) : std::nullopt;
}

} // namespace fmi_import
