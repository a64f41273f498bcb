#include "fmi_import/model_description/xml_reader.h"

#include "fmi_import/model_description/xml_characters.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>

namespace fmi_import {

namespace {

constexpr std::string_view xmlUri = "http://www.w3.org/XML/1998/namespace";
constexpr std::string_view xmlnsUri = "http://www.w3.org/2000/xmlns/";

/// Bytes that are themselves in an attribute's value.
constexpr auto plainInValue = [] {
    std::array<bool, 256> plain{};
    plain.fill(true);
    for (const char c : {'\0', '\t', '\n', '\r', '"', '\'', '&', '<'}) {
        plain[static_cast<unsigned char>(c)] = false;
    }
    return plain;
}();

/// ASCII characters that need no second look in a name.
constexpr auto plainInName = [] {
    std::array<bool, 256> plain{};
    for (int c = 0; c < 128; ++c) {
        plain[static_cast<std::size_t>(c)] = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                                             (c >= '0' && c <= '9') || c == '_' || c == '.' ||
                                             c == '-';
    }
    return plain;
}();

bool holds(const std::array<bool, 256>& set, char c) {
    return set[static_cast<unsigned char>(c)];
}

bool startsWith(const char* text, std::string_view beginning) {
    return std::strncmp(text, beginning.data(), beginning.size()) == 0;
}

std::string_view prefixOf(std::string_view name) {
    const auto colon = name.find(':');
    return colon != std::string_view::npos ? name.substr(0, colon) : std::string_view();
}

std::string_view localPart(std::string_view name) {
    return name.substr(name.find(':') + 1);
}

bool isSameName(const XmlAttribute& one, const XmlAttribute& other) {
    return *one.name == *other.name && std::strcmp(one.name, other.name) == 0;
}

} // namespace

const char* XmlElement::attribute(std::string_view attributeName) const {
    const auto found =
        std::ranges::find(attributes, attributeName, [](const XmlAttribute& attribute) {
            return std::string_view(attribute.name);
        });
    return found != attributes.end() ? found->value : nullptr;
}

XmlReader::XmlReader(FileText& text) : at_(text.bytes.get()), bindings_{{"xml", xmlUri, 0}} {
    const std::size_t length = declarationLength(text.view());
    line_ += static_cast<std::size_t>(std::ranges::count(text.view().substr(0, length), '\n'));
    at_ += length;
}

XmlElement XmlReader::root() {
    next();
    return element_;
}

bool XmlReader::nextChild(const XmlElement& parent, XmlElement& child) {
    while (nextInside(parent, child)) {
        if (child.depth == parent.depth + 1) {
            return true;
        }
    }
    return false;
}

bool XmlReader::nextInside(const XmlElement& ancestor, XmlElement& element) {
    while (open_.size() >= ancestor.depth) {
        if (next() == Event::start) {
            element = element_;
            return true;
        }
    }
    return false;
}

void XmlReader::finish() {
    while (next() != Event::endOfDocument) {
    }
}

XmlReader::Event XmlReader::next() {
    if (closesItself_) {
        closesItself_ = false;
        return close();
    }
    do {
        skipText();
    } while (skipDeclarationOrComment());
    return nextMarkup();
}

/// The tag or the end of the text that comes next.
XmlReader::Event XmlReader::nextMarkup() {
    if (*at_ == '\0') {
        if (!isPastRoot_) {
            fail("no element found");
        }
        return Event::endOfDocument;
    }
    if (isPastRoot_) {
        fail("junk after document element");
    }
    if (at_[1] == '/') {
        return readEndTag();
    }
    readStartTag();
    return Event::start;
}

void XmlReader::skipBlanks() {
    for (; isXmlBlank(*at_); ++at_) {
        line_ += *at_ == '\n' ? 1 : 0;
    }
}

/// Goes on to the next "<" or the end.
void XmlReader::skipText() {
    skipBlanks();
    while (*at_ != '<' && *at_ != '\0') {
        if (open_.empty()) {
            fail(isPastRoot_ ? "junk after document element" : "not well-formed (invalid token)");
        }
        if (*at_ == '&') {
            std::array<char, 4> ignored{};
            decodeReference(ignored.data());
        } else if (*at_ == ']' && startsWith(at_, "]]>")) {
            failAtToken();
        } else {
            ++at_;
        }
        skipBlanks();
    }
}

/// Skips what begins with "<!" or "<?"; false when something else comes next.
bool XmlReader::skipDeclarationOrComment() {
    if (*at_ == '\0' || (at_[1] != '!' && at_[1] != '?')) {
        return false;
    }
    if (startsWith(at_, "<?")) {
        skipInstruction();
    } else if (startsWith(at_, "<!--")) {
        skipComment();
    } else if (startsWith(at_, "<![CDATA[") && !open_.empty()) {
        skipUntil("]]>");
    } else if (startsWith(at_, "<!DOCTYPE") && !isPastRoot_ && open_.empty()) {
        fail("document type declarations are not supported");
    } else {
        at_ += 2;
        failAtToken();
    }
    return true;
}

/// Goes on behind the next `end`.
void XmlReader::skipUntil(std::string_view end) {
    char* found = std::strstr(at_, end.data());
    if (found == nullptr) {
        fail(end == "]]>" ? "unclosed CDATA section" : "unclosed token");
    }
    line_ += static_cast<std::size_t>(std::count(at_, found, '\n'));
    at_ = found + end.size();
}

void XmlReader::skipComment() {
    at_ += 4;
    skipUntil("--");
    if (*at_ != '>') {
        failAtToken();
    }
    ++at_;
}

void XmlReader::skipInstruction() {
    at_ += 2;
    const char* name = at_;
    const bool hasPrefix = readName();
    const std::string_view target(name, at_);
    if (target == "xml") {
        fail("XML or text declaration not at start of entity");
    }
    const auto isLetter = [&](std::size_t at, char letter) { return (target[at] | ' ') == letter; };
    const bool isReserved =
        target.size() == 3 && isLetter(0, 'x') && isLetter(1, 'm') && isLetter(2, 'l');
    if (isReserved || hasPrefix || !(isXmlBlank(*at_) || startsWith(at_, "?>"))) {
        failAtToken();
    }
    skipUntil("?>");
}

void XmlReader::readStartTag() {
    element_.line = line_;
    attributes_.clear();
    const char* name = ++at_;
    hasPrefixes_ = readName();
    char* nameEnd = at_;
    for (skipBlanks(); *at_ != '>' && *at_ != '/'; skipBlanks()) {
        if (!isXmlBlank(at_[-1])) {
            failAtToken();
        }
        readAttribute();
    }
    closesItself_ = *at_ == '/';
    at_ += closesItself_ ? 1 : 0;
    if (*at_ != '>') {
        failAtToken();
    }
    ++at_;
    *nameEnd = '\0';
    open_.push_back(name);
    if (open_.size() > deepestElement || ++elements_ > mostElements) {
        fail("more than " + std::to_string(mostElements) + " elements, or nested deeper than " +
             std::to_string(deepestElement));
    }
    element_.name = name;
    element_.depth = open_.size();
    element_.attributes = attributes_;
    checkAttributes();
}

void XmlReader::readAttribute() {
    XmlAttribute attribute{at_, nullptr};
    hasPrefixes_ = readName() || hasPrefixes_;
    char* nameEnd = at_;
    skipBlanks();
    if (*at_ != '=') {
        failAtToken();
    }
    ++at_;
    skipBlanks();
    attribute.value = readValue();
    *nameEnd = '\0';
    if (attributes_.size() == mostAttributes) {
        fail("more than " + std::to_string(mostAttributes) + " attributes in one element");
    }
    attributes_.push_back(attribute);
}

XmlReader::Event XmlReader::readEndTag() {
    at_ += 2;
    const char* name = at_;
    readName();
    const std::string_view text(name, at_);
    skipBlanks();
    if (*at_ != '>' || open_.empty()) {
        failAtToken();
    }
    if (text != open_.back()) {
        fail("mismatched tag");
    }
    ++at_;
    return close();
}

XmlReader::Event XmlReader::close() {
    while (bindings_.back().depth >= open_.size()) {
        bindings_.pop_back();
    }
    open_.pop_back();
    isPastRoot_ = open_.empty();
    return Event::end;
}

/// Goes on behind a name; whether it has a prefix.
bool XmlReader::readName() {
    readNamePart();
    if (*at_ != ':') {
        return false;
    }
    ++at_;
    readNamePart();
    return true;
}

void XmlReader::readNamePart() {
    const std::size_t first = nameStartLength(at_);
    if (first == 0) {
        failAtToken();
    }
    at_ += first;
    while (holds(plainInName, *at_)) {
        ++at_;
    }
    while (const std::size_t length = namePartLength(at_)) {
        at_ += length;
    }
}

/// Decodes an attribute's value in place (XML 1.0 section 3.3.3).
char* XmlReader::readValue() {
    const char quote = *at_;
    if (quote != '"' && quote != '\'') {
        failAtToken();
    }
    char* const begin = ++at_;
    for (char* to = begin;;) {
        const char* run = at_;
        while (holds(plainInValue, *at_)) {
            ++at_;
        }
        const auto length = static_cast<std::size_t>(at_ - run);
        std::memmove(to, run, to != run ? length : 0);
        to += length;
        const char c = *at_;
        if (c == quote) {
            if (at_++ - begin > static_cast<std::ptrdiff_t>(longestAttribute)) {
                fail("attribute longer than " + std::to_string(longestAttribute) + " bytes");
            }
            *to = '\0';
            return begin;
        }
        if (c == '&') {
            to = decodeReference(to);
        } else if (isXmlBlank(c)) {
            at_ += startsWith(at_, "\r\n") ? 1 : 0;
            line_ += *at_++ == '\n' ? 1 : 0;
            *to++ = ' ';
        } else if (c == '\0' || c == '<') {
            failAtToken();
        } else {
            *to++ = *at_++;
        }
    }
}

/// Writes the character that a reference stands for; the end of what was written, which is never
/// longer than the reference.
char* XmlReader::decodeReference(char* to) {
    struct Entity {
        std::string_view reference;
        char character;
    };

    static constexpr std::array entities{Entity{"&lt;", '<'}, Entity{"&gt;", '>'},
                                         Entity{"&amp;", '&'}, Entity{"&quot;", '"'},
                                         Entity{"&apos;", '\''}};
    for (const auto& [reference, character] : entities) {
        if (startsWith(at_, reference)) {
            at_ += reference.size();
            *to = character;
            return to + 1;
        }
    }
    ++at_;
    if (*at_ == '#') {
        return writeUtf8(to, readNumber());
    }
    if (readName() || *at_ != ';') {
        failAtToken();
    }
    fail("undefined entity");
}

/// The character of a reference by number, from its "#" to its ";".
std::uint32_t XmlReader::readNumber() {
    ++at_;
    const bool isHexadecimal = *at_ == 'x';
    at_ += isHexadecimal ? 1 : 0;
    const char* first = at_;
    const std::string_view digits = "0123456789abcdef";
    const std::uint32_t base = isHexadecimal ? 16 : 10;
    constexpr std::uint32_t tooLarge = 0x110000;
    std::uint32_t number = 0;
    for (; *at_ != ';'; ++at_) {
        const char c = *at_ >= 'A' && *at_ <= 'F' ? static_cast<char>(*at_ | ' ') : *at_;
        const auto digit = digits.substr(0, base).find(c);
        if (digit == std::string_view::npos) {
            failAtToken();
        }
        number = std::min(number * base + static_cast<std::uint32_t>(digit), tooLarge);
    }
    if (at_++ == first) {
        failAtToken();
    }
    if (!isXmlCharacter(number)) {
        fail("reference to invalid character number");
    }
    return number;
}

void XmlReader::checkAttributes() {
    for (auto one = attributes_.begin(); one != attributes_.end(); ++one) {
        for (auto other = attributes_.begin(); other != one; ++other) {
            if (isSameName(*one, *other)) {
                fail("duplicate attribute");
            }
        }
    }
    checkNamespaces();
}

void XmlReader::checkNamespaces() {
    bool hasNames = hasPrefixes_;
    for (const auto& [name, value] : attributes_) {
        if (*name == 'x' && startsWith(name, "xmlns")) {
            hasNames = true;
            if (name[5] == ':') {
                declare(localPart(name), value);
            } else if (name[5] == '\0' && (value == xmlUri || value == xmlnsUri)) {
                fail("prefix must not be bound to one of the reserved namespace names");
            }
        }
    }
    if (!hasNames) {
        return;
    }
    static_cast<void>(uriOf(prefixOf(element_.name)));
    std::vector<std::pair<std::string_view, std::string_view>> names;
    for (const XmlAttribute& attribute : attributes_) {
        const std::string_view prefix = prefixOf(attribute.name);
        if (!prefix.empty() && prefix != "xmlns") {
            names.emplace_back(uriOf(prefix), localPart(attribute.name));
        }
    }
    std::ranges::sort(names);
    if (std::ranges::adjacent_find(names) != names.end()) {
        fail("duplicate attribute");
    }
}

void XmlReader::declare(std::string_view prefix, std::string_view uri) {
    if (uri.empty()) {
        fail("must not undeclare prefix");
    }
    if (prefix == "xmlns") {
        fail("reserved prefix (xmlns) must not be declared or undeclared");
    }
    if ((prefix == "xml") != (uri == xmlUri) || uri == xmlnsUri) {
        fail("prefix must not be bound to one of the reserved namespace names");
    }
    if (bindings_.size() == mostNamespaces) {
        fail("more than " + std::to_string(mostNamespaces) + " namespaces");
    }
    bindings_.push_back({prefix, uri, open_.size()});
}

/// What `prefix` is bound to; empty for an empty one.
std::string_view XmlReader::uriOf(std::string_view prefix) const {
    const auto bound =
        std::find_if(bindings_.rbegin(), bindings_.rend(),
                     [&](const Binding& binding) { return binding.prefix == prefix; });
    if (prefix.empty() || bound != bindings_.rend()) {
        return prefix.empty() ? std::string_view() : bound->uri;
    }
    fail("unbound prefix");
}

void XmlReader::fail(std::string reason) const {
    throw XmlFault{std::move(reason), line_};
}

void XmlReader::failAtToken() const {
    fail(*at_ == '\0' ? "unclosed token" : "not well-formed (invalid token)");
}

} // namespace fmi_import
