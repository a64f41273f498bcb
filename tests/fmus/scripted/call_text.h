/**
 * @file call_text.h
 * @brief How the scripted slave writes calls down and reads the values of its script.
 */
#pragma once

#include "example_fmus/slave/variable_store.h"

#include <charconv>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

using Names = std::vector<std::string>;

/** The names of the referenced variables; "#7" for a reference that has none. */
inline Names namesOf(References references, std::span<const std::string_view> known) {
    Names names;
    for (fmi2ValueReference reference : references) {
        names.push_back(reference < known.size()
                            ? std::string(known[reference])
                            : std::string("#").append(std::to_string(reference)));
    }
    return names;
}

inline std::string joined(const Names& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : " ") + name;
    }
    return text;
}

/** The value with 17 digits, which is every bit of it. */
inline std::string textOf(double value) {
    char buffer[40];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 17);
    return {buffer, end.ptr};
}

inline std::string textOf(int value) {
    return std::to_string(value);
}

/** The text on one line: a line end in it is written as "\n". */
inline std::string textOf(fmi2String value) {
    std::string text;
    for (char letter : std::string_view(value != nullptr ? value : "null")) {
        text += letter == '\n' ? std::string("\\n") : std::string(1, letter);
    }
    return text;
}

/** "name=value" for each variable. */
template <typename Value>
std::string assignments(const Names& names, const Value* values) {
    Names texts;
    for (std::size_t i = 0; i < names.size(); ++i) {
        texts.push_back(names[i] + "=" + textOf(values[i]));
    }
    return joined(texts);
}

/** The value that a script spells as @p text; 0 when it is no number of that type. */
template <typename Value>
Value valueOf(const std::string& text) {
    if constexpr (std::is_same_v<Value, fmi2String>) {
        return text == "null" ? nullptr : text.c_str();
    } else {
        Value value{};
        std::from_chars(text.data(), text.data() + text.size(), value);
        return value;
    }
}
