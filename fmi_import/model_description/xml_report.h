#pragma once

#include "fmi_import/log.h"
#include "fmi_import/xml_document.h"

#include <cstring>
#include <optional>
#include <span>
#include <string>

namespace fmi_import {

/// Ends the reading of a model description; the reason has been logged.
struct ParseAborted {};

/// Reports what is wrong in a model description, with the line it is in.
class XmlReport {
  public:
    /// Reports on the document that was read from the file `path`.
    XmlReport(const Log& log, std::string path) : log_(log), path_(std::move(path)) {}

    [[nodiscard]] const Log& log() const { return log_; }

    /// Says which element is being read.
    void progress(const char* element) const;

    /// The document is not well-formed.
    void malformed(const XmlFault& fault) const;

    /// Ends the reading.
    [[noreturn]] void abort(pugi::xml_node node, std::string_view reason) const;

    /// Something is wrong and a default takes its place.
    void recover(pugi::xml_node node, std::string_view reason) const;

    /// recover() because of a value that cannot be read; `kind` is "real", "enumeration", ...
    void recoverFromValue(pugi::xml_node node, std::string_view kind, std::string_view attribute,
                          std::string_view value) const;

    void error(std::string_view text) const { log_.error(module::modelDescription, {text}); }

    void warning(std::string_view text) const { log_.warning(module::modelDescription, {text}); }

    /// Leaves out an element: `reason` follows its line number. Elements inside it are named too.
    void skip(pugi::xml_node node, std::string_view reason) const;

    /// Names an element inside one that is left out.
    void skipNested(pugi::xml_node node) const;

    void skipUnknown(pugi::xml_node node) const;

    void skipMisplaced(pugi::xml_node node, std::string_view before) const;

    /// Aborts because `node`, an `element`, lacks `attribute`.
    [[noreturn]] void abortMissing(pugi::xml_node node, std::string_view element,
                                   std::string_view attribute) const;

  private:
    [[nodiscard]] std::size_t lineAt(std::ptrdiff_t offset) const;
    [[nodiscard]] std::string lineText(pugi::xml_node node) const;

    Log log_;
    std::string path_;
    /// Made of the file anew with the first report: parsing has changed the text in memory, and a
    /// document without a fault need not pay for its lines.
    mutable std::optional<LineIndex> lines_;
};

/// Puts the values of `node`'s attributes into `values`, at the places that their names have in
/// `names`; those that are absent stay null. Attributes without a place are reported. Fastest where
/// `names` has the order in which attributes are usually written.
void readAttributes(const XmlReport& report, pugi::xml_node node,
                    std::span<const char* const> names, std::span<const char*> values);

/// Whether two texts are equal. Nearly all that a model description makes one compare differ in
/// their first character.
inline bool isSame(const char* text, const char* other) {
    return *text == *other && std::strcmp(text, other) == 0;
}

/// `text`, or "" for null.
inline const char* orEmpty(const char* text) {
    return text != nullptr ? text : "";
}

} // namespace fmi_import
