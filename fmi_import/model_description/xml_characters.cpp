#include "fmi_import/model_description/xml_characters.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace fmi_import {

namespace {

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

/// What may begin a name beyond ASCII, and what may only follow in it.
constexpr std::array nameStarts{
    Range{0xC0, 0xD6},     Range{0xD8, 0xF6},     Range{0xF8, 0x2FF},    Range{0x370, 0x37D},
    Range{0x37F, 0x1FFF},  Range{0x200C, 0x200D}, Range{0x2070, 0x218F}, Range{0x2C00, 0x2FEF},
    Range{0x3001, 0xD7FF}, Range{0xF900, 0xFDCF}, Range{0xFDF0, 0xFFFD}, Range{0x10000, 0xEFFFF}};
constexpr std::array nameParts{Range{0xB7, 0xB7}, Range{0x300, 0x36F}, Range{0x203F, 0x2040}};

struct Character {
    std::uint32_t code;
    std::size_t length; ///< In bytes; 0 when the bytes are no character.
};

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// Decodes the character at the front of `text`, which is not empty.
Character decode(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80) {
        return {lead, 1};
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
        return {0, 0};
    }
    std::uint32_t code = lead & (0xFFU >> (length + 1));
    for (const char c : text.substr(1, length - 1)) {
        if (!isContinuation(c)) {
            return {0, 0};
        }
        code = (code << 6U) | (static_cast<unsigned char>(c) & 0x3FU);
    }
    constexpr std::array<std::uint32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    return code >= least[length] ? Character{code, length} : Character{0, 0};
}

bool isIn(const auto& ranges, std::uint32_t code) {
    return std::ranges::any_of(
        ranges, [&](const Range& range) { return code >= range.first && code <= range.last; });
}

bool isAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Decodes a character that is known to be legal: no byte is read behind it.
Character decodeLegal(const char* text) {
    return decode({text, 4});
}

/// Length of the character at the front of `text` if a document may have it, otherwise 0.
std::size_t legalLength(std::string_view text) {
    const Character character = decode(text);
    return isXmlCharacter(character.code) ? character.length : 0;
}

bool isPlain(char c) {
    return (c >= ' ' && c < '\x7f') || isXmlBlank(c);
}

/// True when all of eight bytes are ASCII and none is a control character.
bool arePlain(const char* bytes) {
    constexpr std::uint64_t ones = 0x0101010101010101U;
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    // A byte below 0x20 borrows from its highest bit; one from 0x80 on has it set.
    return (((word - ones * 0x20U) | word) & (ones * 0x80U)) == 0;
}

} // namespace

bool isXmlCharacter(std::uint32_t character) {
    if (character < 0x20) {
        return character == '\t' || character == '\n' || character == '\r';
    }
    return character < 0xD800 || (character > 0xDFFF && character < 0xFFFE) ||
           (character > 0xFFFF && character < 0x110000);
}

std::size_t firstIllegalByte(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        if (at + 8 <= text.size() && arePlain(text.data() + at)) {
            at += 8;
        } else if (isPlain(text[at])) {
            ++at;
        } else if (const std::size_t length = legalLength(text.substr(at))) {
            at += length;
        } else {
            return at;
        }
    }
    return std::string_view::npos;
}

std::size_t nameStartLength(const char* text) {
    if (isAsciiLetter(*text) || *text == '_') {
        return 1;
    }
    if (static_cast<unsigned char>(*text) < 0x80) {
        return 0;
    }
    const Character character = decodeLegal(text);
    return isIn(nameStarts, character.code) ? character.length : 0;
}

std::size_t namePartLength(const char* text) {
    if ((*text >= '0' && *text <= '9') || *text == '.' || *text == '-') {
        return 1;
    }
    if (const std::size_t length = nameStartLength(text)) {
        return length;
    }
    if (static_cast<unsigned char>(*text) < 0x80) {
        return 0;
    }
    const Character character = decodeLegal(text);
    return isIn(nameParts, character.code) ? character.length : 0;
}

char* writeUtf8(char* to, std::uint32_t character) {
    const auto continuation = [&](unsigned shift) {
        return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
    };
    if (character < 0x80) {
        *to++ = static_cast<char>(character);
    } else if (character < 0x800) {
        *to++ = static_cast<char>(0xC0U | (character >> 6U));
        *to++ = continuation(0);
    } else if (character < 0x10000) {
        *to++ = static_cast<char>(0xE0U | (character >> 12U));
        *to++ = continuation(6);
        *to++ = continuation(0);
    } else {
        *to++ = static_cast<char>(0xF0U | (character >> 18U));
        *to++ = continuation(12);
        *to++ = continuation(6);
        *to++ = continuation(0);
    }
    return to;
}

} // namespace fmi_import
