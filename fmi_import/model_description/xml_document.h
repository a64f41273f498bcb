#pragma once

#include <pugixml.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fmi_import {

/// Where the lines of a text begin, noted before the parser changes the text in place.
class LineIndex {
  public:
    explicit LineIndex(std::string_view text);

    /// Line of the character at `offset`, counted from 1.
    [[nodiscard]] std::size_t lineAt(std::ptrdiff_t offset) const;

  private:
    std::vector<std::uint32_t> ends_;
};

/// The bytes of a file, which the texts of a parsed document stay in.
struct FileText {
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;

    [[nodiscard]] std::string_view view() const { return {bytes.get(), size}; }
};

/// Largest model description that is read: its tree takes a multiple of that in memory.
inline constexpr std::uint64_t largestModelDescription = std::uint64_t{1} << 30U;

/// Reads `path` as a whole; nothing when it cannot be read or is larger than a model description
/// may be.
std::optional<FileText> readFile(const std::string& path);

/// What is wrong with a document and where.
struct XmlFault {
    std::string_view reason; ///< In a parser's usual words; empty when nothing is wrong.
    std::ptrdiff_t offset;
};

/// A document of `size` bytes must be well-formed and have one root element.
XmlFault faultOf(const pugi::xml_document& document, const pugi::xml_parse_result& result,
                 std::size_t size);

/// The first element of `document`; null when there is none.
pugi::xml_node rootElement(const pugi::xml_document& document);

/// "Parse error at line <n>:" and on a line of its own the reason.
std::string parseErrorText(std::size_t line, std::string_view reason);

/// `<directory><separator>modelDescription.xml`.
std::string modelDescriptionPath(std::string_view directory);

} // namespace fmi_import
