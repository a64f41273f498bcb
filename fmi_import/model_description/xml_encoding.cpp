#include "fmi_import/model_description/xml_encoding.h"

#include "fmi_import/model_description/xml_characters.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

namespace fmi_import {

namespace {

[[noreturn]] void failAt(std::string_view text, std::size_t at, std::string reason) {
    const auto before = text.substr(0, at);
    throw XmlFault{std::move(reason),
                   static_cast<std::size_t>(std::ranges::count(before, '\n')) + 1};
}

/// Reads an XML declaration piece by piece.
class Declaration {
  public:
    explicit Declaration(std::string_view text) : text_(text) { read(); }

    [[nodiscard]] std::size_t length() const { return at_; }

    [[nodiscard]] std::string_view encoding() const { return encoding_; }

  private:
    void read() {
        constexpr std::string_view begin = "<?xml";
        if (!text_.starts_with(begin) || text_.size() <= begin.size() ||
            !isXmlBlank(text_[begin.size()])) {
            return;
        }
        at_ = begin.size();
        if (!take("version")) {
            fail();
        }
        if (const auto encoding = take("encoding")) {
            encoding_ = *encoding;
            if (encoding_.empty() || nameStartLength(encoding_.data()) != 1 ||
                encoding_[0] == '_') {
                fail();
            }
        }
        const auto standalone = take("standalone");
        if (standalone && *standalone != "yes" && *standalone != "no") {
            fail();
        }
        skipBlanks();
        if (!text_.substr(at_).starts_with("?>")) {
            fail();
        }
        at_ += 2;
    }

    /// The value of the attribute `name` if that comes next, after a blank.
    std::optional<std::string_view> take(std::string_view name) {
        const std::size_t before = at_;
        skipBlanks();
        if (at_ == before || !text_.substr(at_).starts_with(name)) {
            return std::nullopt;
        }
        at_ += name.size();
        skipBlanks();
        expect("=");
        skipBlanks();
        const char quote = expect("\"'");
        const std::size_t begin = at_;
        at_ = std::min(text_.find(quote, at_), text_.size());
        const std::string_view value = text_.substr(begin, at_ - begin);
        expect("\"'");
        const auto mayHave = [](char c) {
            return static_cast<unsigned char>(c) < 0x80 && namePartLength(&c) == 1;
        };
        if (!std::ranges::all_of(value, mayHave)) {
            fail();
        }
        return value;
    }

    char expect(std::string_view anyOf) {
        if (at_ >= text_.size() || anyOf.find(text_[at_]) == std::string_view::npos) {
            fail();
        }
        return text_[at_++];
    }

    void skipBlanks() {
        while (at_ < text_.size() && isXmlBlank(text_[at_])) {
            ++at_;
        }
    }

    [[noreturn]] void fail() const {
        failAt(text_, at_,
               at_ < text_.size() ? "XML declaration not well-formed" : "unclosed token");
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::string_view encoding_;
};

std::string inCapitals(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return result;
}

FileText withoutFront(FileText text, std::size_t count) {
    text.size -= count;
    std::memmove(text.bytes.get(), text.bytes.get() + count, text.size + 1);
    return text;
}

/// The 16 bits at `at`; `high` is the place of the higher byte.
std::uint32_t unitAt(std::string_view text, std::size_t at, std::size_t high) {
    const auto byte = [&](std::size_t place) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(text[at + place]));
    };
    return (byte(high) << 8U) | byte(1 - high);
}

FileText fromUtf16(const FileText& text, std::size_t high) {
    const std::string_view units = text.view();
    FileText result = makeText(units.size() / 2 * 3);
    char* to = result.bytes.get();
    const auto fail = [&] {
        failAt({result.bytes.get(), to}, std::string_view::npos, "not well-formed (invalid token)");
    };
    for (std::size_t at = 0; at + 1 < units.size(); at += 2) {
        std::uint32_t code = unitAt(units, at, high);
        if (code == 0xFEFF && at == 0) {
            continue;
        }
        if (code >= 0xD800 && code < 0xDC00 && at + 3 < units.size()) {
            at += 2;
            const std::uint32_t low = unitAt(units, at, high);
            code = low >= 0xDC00 && low < 0xE000 ? 0x10000 + ((code - 0xD800) << 10U) + low - 0xDC00
                                                 : 0;
        }
        if (!isXmlCharacter(code)) {
            fail();
        }
        to = writeUtf8(to, code);
    }
    if (units.size() % 2 != 0) {
        fail();
    }
    result.size = static_cast<std::size_t>(to - result.bytes.get());
    *to = '\0';
    return result;
}

bool isHigh(char c) {
    return static_cast<unsigned char>(c) >= 0x80;
}

FileText fromLatin1(const FileText& text) {
    const auto high = std::ranges::count_if(text.view(), isHigh);
    FileText result = makeText(text.size + static_cast<std::size_t>(high));
    char* to = result.bytes.get();
    for (const char c : text.view()) {
        to = writeUtf8(to, static_cast<unsigned char>(c));
    }
    return result;
}

/// Place of the higher byte of each 16 bits, when the text is UTF-16.
std::optional<std::size_t> highByteOfUtf16(std::string_view text) {
    using namespace std::string_view_literals;
    if (text.starts_with("\xFF\xFE"sv) || text.starts_with("<\0"sv)) {
        return 1;
    }
    if (text.starts_with("\xFE\xFF"sv) || text.starts_with("\0<"sv)) {
        return 0;
    }
    return std::nullopt;
}

void requireAscii(std::string_view text) {
    const auto high = std::ranges::find_if(text, isHigh);
    if (high != text.end()) {
        failAt(text, static_cast<std::size_t>(high - text.begin()),
               "not well-formed (invalid token)");
    }
}

FileText decoded(FileText text) {
    if (const auto high = highByteOfUtf16(text.view())) {
        text = fromUtf16(text, *high);
        const std::string encoding = inCapitals(Declaration(text.view()).encoding());
        if (!encoding.empty() && !encoding.starts_with("UTF-16")) {
            failAt({}, 0, "encoding specified in XML declaration is incorrect");
        }
        return text;
    }
    if (text.view().starts_with("\xEF\xBB\xBF")) {
        text = withoutFront(std::move(text), 3);
    }
    const std::string encoding = inCapitals(Declaration(text.view()).encoding());
    if (encoding == "ISO-8859-1") {
        return fromLatin1(text);
    }
    if (encoding.starts_with("UTF-16")) {
        failAt({}, 0, "encoding specified in XML declaration is incorrect");
    }
    if (encoding == "US-ASCII") {
        requireAscii(text.view());
    } else if (!encoding.empty() && encoding != "UTF-8") {
        failAt({}, 0, "unknown encoding " + encoding);
    }
    return text;
}

} // namespace

FileText asUtf8(FileText text, bool isWhole) {
    FileText result = decoded(std::move(text));
    const std::size_t illegal = firstIllegalByte(result.view());
    constexpr std::size_t longestCharacter = 4;
    const bool isCut = !isWhole && illegal + longestCharacter > result.size;
    if (illegal != std::string_view::npos && !isCut) {
        failAt(result.view(), illegal, "not well-formed (invalid token)");
    }
    if (illegal != std::string_view::npos) {
        result.size = illegal;
        result.bytes[illegal] = '\0';
    }
    return result;
}

std::size_t declarationLength(std::string_view text) {
    return Declaration(text).length();
}

} // namespace fmi_import
