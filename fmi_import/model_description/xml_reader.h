#pragma once

#include "fmi_import/model_description/xml_document.h"
#include "fmi_import/model_description/xml_encoding.h"

#include <cstddef>
#include <cstring>
#include <span>
#include <string_view>
#include <vector>

namespace fmi_import {

/// Limits on a model description, far above those of real FMUs (the largest known have 10^6
/// variables) and far below what a crafted archive can ask for.
inline constexpr std::size_t mostElements = 20'000'000;
inline constexpr std::size_t deepestElement = 256;
inline constexpr std::size_t mostAttributes = 128; ///< Of one element.
inline constexpr std::size_t mostNamespaces = 64;  ///< In force at one place.
/// In bytes: a list of 10^6 indices has half of that.
inline constexpr std::size_t longestAttribute = std::size_t{16} << 20U;

/// An attribute of a start tag, its value decoded.
struct XmlAttribute {
    const char* name;
    const char* value;
};

/// A start tag.
struct XmlElement {
    const char* name = "";
    std::span<const XmlAttribute> attributes; ///< Until the next element is read.
    std::size_t depth = 0;                    ///< 1 for the root.
    std::size_t line = 1;

    /// The value of an attribute; null when there is none.
    [[nodiscard]] const char* attribute(std::string_view attributeName) const;
};

/// Whether two texts are equal. Nearly all that a model description makes one compare differ in
/// their first character.
inline bool isSame(const char* text, const char* other) {
    return *text == *other && std::strcmp(text, other) == 0;
}

/// Reads the elements of a document one after the other and refuses what is not well-formed XML 1.0
/// with namespaces.
///
/// Nothing is kept of an element that has been read, so that a document of any size needs no
/// memory beside its text. Names and values are decoded in place and live as long as the text.
/// Document type declarations are refused: a model description needs none, and they could make a
/// document mean something else than it says.
///
/// Every function throws XmlFault where the document is not well-formed or beyond a limit.
class XmlReader {
  public:
    /// `text` is from asUtf8() and is changed.
    explicit XmlReader(FileText& text);

    /// Reads up to the root's start tag.
    XmlElement root();

    /// Goes on to the next child of `parent`, past what was not read of the one before; false when
    /// the parent ends.
    bool nextChild(const XmlElement& parent, XmlElement& child);

    /// Goes on to the next element anywhere inside `ancestor`; false when that ends.
    bool nextInside(const XmlElement& ancestor, XmlElement& element);

    /// Reads what comes after the root.
    void finish();

    /// The line that was read last, counted from 1.
    [[nodiscard]] std::size_t line() const { return line_; }

  private:
    enum class Event { start, end, endOfDocument };

    struct Binding {
        std::string_view prefix;
        std::string_view uri;
        std::size_t depth;
    };

    Event next();
    Event nextMarkup();
    void skipText();
    void skipBlanks();
    bool skipDeclarationOrComment();
    void skipUntil(std::string_view end);
    void skipComment();
    void skipInstruction();
    void readStartTag();
    void readAttribute();
    Event readEndTag();
    Event close();
    bool readName();
    void readNamePart();
    char* readValue();
    char* decodeReference(char* to);
    std::uint32_t readNumber();
    void checkAttributes();
    void checkNamespaces();
    void declare(std::string_view prefix, std::string_view uri);
    [[nodiscard]] std::string_view uriOf(std::string_view prefix) const;
    [[noreturn]] void fail(std::string reason) const;
    [[noreturn]] void failAtToken() const;

    char* at_;
    std::size_t line_ = 1;
    std::size_t elements_ = 0;
    bool closesItself_ = false;
    bool isPastRoot_ = false;
    bool hasPrefixes_ = false; ///< The tag that is being read.
    XmlElement element_;
    std::vector<XmlAttribute> attributes_;
    std::vector<const char*> open_; ///< Names of the elements that are not closed yet.
    std::vector<Binding> bindings_;
};

} // namespace fmi_import
