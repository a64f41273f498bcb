#include "programs/support/terminal_text.h"

#include "platform/terminal.h"

#include <algorithm>
#include <cstdint>

namespace program_support {
namespace {

std::uint8_t byteAt(std::string_view text, std::size_t index) {
    return static_cast<std::uint8_t>(text[index]);
}

/// Bytes of the character that begins with `lead`; 0 when none does.
std::size_t lengthAfter(std::uint8_t lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// Excludes longer forms than needed, surrogates and what lies beyond Unicode.
bool mayFollow(std::uint8_t second, std::uint8_t lead) {
    const std::uint8_t least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const std::uint8_t most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    return second >= least && second <= most;
}

/// Bytes of the character in UTF-8 that `text` begins with; 0 when it begins with none.
std::size_t characterLength(std::string_view text) {
    const auto length = lengthAfter(byteAt(text, 0));
    if (length == 0 || length > text.size()) {
        return 0;
    }
    const auto rest = text.substr(1, length - 1);
    const bool continued = std::all_of(rest.begin(), rest.end(), [](char c) {
        return (static_cast<std::uint8_t>(c) & 0xC0) == 0x80;
    });
    return continued && (length == 1 || mayFollow(byteAt(text, 1), byteAt(text, 0))) ? length : 0;
}

/// C1 are the characters U+0080 to U+009F.
bool isControl(std::string_view character) {
    const auto lead = byteAt(character, 0);
    return lead < 0x20 || lead == 0x7F || (lead == 0xC2 && byteAt(character, 1) < 0xA0);
}

std::string escaped(std::string_view prefix, std::uint8_t code, std::string_view suffix) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    return std::string(prefix) + digits[code / 16U] + digits[code % 16U] + std::string(suffix);
}

/// `text` with `prefix`, the code in two digits and `suffix` for each control character but those
/// in `kept`, and for each byte that is no UTF-8 unless `keepsBytes`.
std::string withEscapes(std::string_view text, std::string_view prefix, std::string_view suffix,
                        std::string_view kept, bool keepsBytes) {
    std::string result;
    while (!text.empty()) {
        const auto length = characterLength(text);
        const auto character = text.substr(0, std::max<std::size_t>(length, 1));
        const bool fits = length == 0 ? keepsBytes
                                      : !isControl(character) ||
                                            kept.find(character.front()) != std::string_view::npos;
        // The last byte of a control character is its code.
        result += fits ? std::string(character)
                       : escaped(prefix, byteAt(character, character.size() - 1), suffix);
        text.remove_prefix(character.size());
    }
    return result;
}

/// Length of what `text` ends with and the next piece decides on: a begun character or a carriage
/// return.
std::size_t begunLength(std::string_view text) {
    if (text.ends_with('\r')) {
        return 1;
    }
    for (std::size_t length = 1; length < 4 && length <= text.size(); ++length) {
        const auto needed = lengthAfter(byteAt(text, text.size() - length));
        if (needed != 0) {
            return needed > length ? length : 0;
        }
    }
    return 0;
}

/// Lines of files that were written on Windows end in CR LF.
std::string withPlainLineEnds(std::string_view text) {
    std::string result(text);
    for (auto found = result.find("\r\n"); found != std::string::npos;
         found = result.find("\r\n", found)) {
        result.erase(found, 1);
    }
    return result;
}

} // namespace

std::string terminalText(std::string_view text) {
    return withEscapes(text, "\\x", "", "\n\t", !platform::narrowTextsAreUtf8());
}

std::string terminalJson(std::string_view json) {
    return withEscapes(json, "\\u00", "", "\n", false);
}

std::string terminalXml(std::string_view xml) {
    return withEscapes(xml, "&#x", ";", "\n\t", false);
}

TerminalStream::TerminalStream(std::ostream& stream) : stream_(stream), target_(stream.rdbuf()) {
    stream_.rdbuf(this);
}

TerminalStream::~TerminalStream() {
    const auto text = terminalText(begun_);
    target_->sputn(text.data(), static_cast<std::streamsize>(text.size()));
    target_->pubsync();
    const auto state = stream_.rdstate();
    stream_.rdbuf(target_);
    stream_.clear(state);
}

bool TerminalStream::put(std::string_view text) {
    begun_ += text;
    const auto whole = begun_.size() - begunLength(begun_);
    const auto shown = terminalText(withPlainLineEnds(std::string_view(begun_).substr(0, whole)));
    begun_.erase(0, whole);
    const auto size = static_cast<std::streamsize>(shown.size());
    return target_->sputn(shown.data(), size) == size;
}

std::streamsize TerminalStream::xsputn(const char* text, std::streamsize size) {
    return put({text, static_cast<std::size_t>(size)}) ? size : 0;
}

TerminalStream::int_type TerminalStream::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof())) {
        return traits_type::not_eof(character);
    }
    const char piece = traits_type::to_char_type(character);
    return put({&piece, 1}) ? character : traits_type::eof();
}

int TerminalStream::sync() {
    return target_->pubsync();
}

} // namespace program_support
