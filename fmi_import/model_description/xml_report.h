#pragma once

#include "fmi_import/log.h"
#include "fmi_import/model_description/xml_reader.h"

#include <span>
#include <string_view>

namespace fmi_import {

/// Ends the reading of a model description; the reason has been logged.
struct ParseAborted {};

/// Reports what is wrong in a model description, with the line it is in.
class XmlReport {
  public:
    /// Reports on the document that `xml` reads.
    XmlReport(const Log& log, XmlReader& xml) : log_(log), xml_(xml) {}

    [[nodiscard]] const Log& log() const { return log_; }

    [[nodiscard]] XmlReader& xml() const { return xml_; }

    /// Says which element is being read.
    void progress(const char* element) const;

    /// Ends the reading at `element`.
    [[noreturn]] void abort(const XmlElement& element, std::string_view reason) const;

    /// Ends the reading where it is.
    [[noreturn]] void abort(std::string_view reason) const;

    /// Something is wrong and a default takes its place.
    void recover(const XmlElement& element, std::string_view reason) const;

    /// recover() because of a value that cannot be read; `kind` is "real", "enumeration", ...
    void recoverFromValue(const XmlElement& element, std::string_view kind,
                          std::string_view attribute, std::string_view value) const;

    void error(Log::Parts parts) const { log_.error(module::modelDescription, parts); }

    void warning(Log::Parts parts) const { log_.warning(module::modelDescription, parts); }

    /// Leaves out an element: `reason` follows its line number. Elements inside it are named too.
    void skip(const XmlElement& element, std::string_view reason) const;

    /// Names an element inside one that is left out.
    void skipNested(const XmlElement& element) const;

    void skipUnknown(const XmlElement& element) const;

    void skipMisplaced(const XmlElement& element, std::string_view before) const;

    /// Aborts because `element`, a `kind`, lacks `attribute`.
    [[noreturn]] void abortMissing(const XmlElement& element, std::string_view kind,
                                   std::string_view attribute) const;

  private:
    [[noreturn]] void abortAt(std::size_t line, std::string_view reason) const;

    Log log_;
    XmlReader& xml_;
};

/// Puts the values of `element`'s attributes into `values`, at the places that their names have in
/// `names`; those that are absent stay null. Attributes without a place are reported. Fastest where
/// `names` has the order in which attributes are usually written.
void readAttributes(const XmlReport& report, const XmlElement& element,
                    std::span<const char* const> names, std::span<const char*> values);

/// `text`, or "" for null.
inline const char* orEmpty(const char* text) {
    return text != nullptr ? text : "";
}

} // namespace fmi_import
