#include "fmi_import/model_description/xml_report.h"

#include <algorithm>
#include <string>

namespace fmi_import {

namespace {

void reportUnknown(const XmlReport& report, const XmlAttribute& attribute) {
    const std::string_view name = attribute.name;
    const char* value = attribute.value;
    if (name.ends_with(":noNamespaceSchemaLocation")) {
        report.warning({"Attribute noNamespaceSchemaLocation='", value,
                        "' is ignored. Using standard fmiModelDescription.xsd."});
    } else if (name == "xsi:type" || name == "xsi:nil") {
        report.warning({"Attribute {http://www.w3.org/2001/XMLSchema-instance}", name.substr(4),
                        "=", value, " is ignored"});
    } else if (!name.starts_with("xmlns") && !name.ends_with(":schemaLocation")) {
        report.error({"Unknown attribute '", name, "=", value, "' in XML"});
    }
}

std::string lineText(const XmlElement& element) {
    return "[Line:" + std::to_string(element.line) + "] ";
}

/// Where `name` is among `names`, looked for from `first` on and round; their number when it is not
/// there.
std::size_t placeOf(const char* name, std::span<const char* const> names, std::size_t first) {
    for (std::size_t tried = 0, at = first; tried < names.size(); ++tried) {
        if (isSame(names[at], name)) {
            return at;
        }
        at = at + 1 < names.size() ? at + 1 : 0;
    }
    return names.size();
}

} // namespace

void XmlReport::progress(const char* element) const {
    log_.verbose(module::modelDescription, {"Parsing XML element ", element});
}

void XmlReport::abort(const XmlElement& element, std::string_view reason) const {
    abortAt(element.line, reason);
}

void XmlReport::abort(std::string_view reason) const {
    abortAt(xml_.line(), reason);
}

void XmlReport::abortAt(std::size_t line, std::string_view reason) const {
    log_.fatal(module::modelDescription, {reason});
    reportParseError(log_, module::modelDescription, line, "parsing aborted");
    throw ParseAborted{};
}

void XmlReport::recover(const XmlElement& element, std::string_view reason) const {
    log_.info(module::modelDescription, {lineText(element), "Detected during parsing:"});
    log_.error(module::modelDescription, {reason});
}

void XmlReport::recoverFromValue(const XmlElement& element, std::string_view kind,
                                 std::string_view attribute, std::string_view value) const {
    std::string reason = "XML element '";
    reason.append(element.name).append("': could not parse value for ").append(kind);
    reason.append(" attribute '").append(attribute).append("'='").append(value).append("'");
    recover(element, reason);
}

void XmlReport::skip(const XmlElement& element, std::string_view reason) const {
    log_.error(module::modelDescription, {lineText(element), reason});
    for (XmlElement nested; xml_.nextInside(element, nested);) {
        skipNested(nested);
    }
}

void XmlReport::skipNested(const XmlElement& element) const {
    warning({lineText(element), "Skipping nested XML element '", element.name, "'"});
}

void XmlReport::skipUnknown(const XmlElement& element) const {
    skip(element, "Unknown element '" + std::string(element.name) + "' in XML, skipping");
}

void XmlReport::skipMisplaced(const XmlElement& element, std::string_view before) const {
    skip(element, "XML element '" + std::string(element.name) +
                      "' cannot be placed after element '" + std::string(before) + "', skipping");
}

void XmlReport::abortMissing(const XmlElement& element, std::string_view kind,
                             std::string_view attribute) const {
    std::string reason = "Parsing XML element '";
    reason.append(kind).append("': required attribute '").append(attribute);
    abort(element, reason.append("' not found"));
}

void readAttributes(const XmlReport& report, const XmlElement& element,
                    std::span<const char* const> names, std::span<const char*> values) {
    std::size_t place = 0;
    for (const XmlAttribute& attribute : element.attributes) {
        place = placeOf(attribute.name, names, place);
        if (place == names.size()) {
            reportUnknown(report, attribute);
            place = 0;
        } else {
            values[place] = attribute.value;
        }
    }
}

} // namespace fmi_import
