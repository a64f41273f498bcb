#pragma once

#include <string_view>

namespace program_support {

/// `text` without the `blanks` that it begins and ends with.
constexpr std::string_view trimmed(std::string_view text, std::string_view blanks = " \t") {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace program_support
