#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Characters of XML 1.0.
namespace fmi_import {

/// Space, tab or an end of line.
inline bool isXmlBlank(char c) {
    return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

/// True when a document may have this character.
bool isXmlCharacter(std::uint32_t character);

/// Position of the first byte that is no part of a UTF-8 character that a document may have; npos
/// when there is none.
std::size_t firstIllegalByte(std::string_view text);

/// Length of the character at `text` if a name may begin with it, otherwise 0. Reads up to the
/// zero that ends the text, which firstIllegalByte() must have found legal.
std::size_t nameStartLength(const char* text);

/// The same of a character that may follow in a name; ":" is not one.
std::size_t namePartLength(const char* text);

/// Writes `character` in UTF-8; the end of what was written.
char* writeUtf8(char* to, std::uint32_t character);

} // namespace fmi_import
