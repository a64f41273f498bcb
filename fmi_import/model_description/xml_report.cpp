#include "fmi_import/xml_report.h"

#include <algorithm>

namespace fmi_import {

namespace {

/// Names every element below the one it is applied to.
class NestedElements : public pugi::xml_tree_walker {
  public:
    explicit NestedElements(const XmlReport& report) : report_(report) {}

    bool for_each(pugi::xml_node& node) override {
        if (node.type() == pugi::node_element) {
            report_.skipNested(node);
        }
        return true;
    }

  private:
    const XmlReport& report_;
};

void reportUnknown(const XmlReport& report, pugi::xml_attribute attribute) {
    const std::string name = attribute.name();
    const std::string value = attribute.value();
    if (name.ends_with(":noNamespaceSchemaLocation")) {
        report.warning("Attribute noNamespaceSchemaLocation='" + value +
                       "' is ignored. Using standard fmiModelDescription.xsd.");
    } else if (name == "xsi:type" || name == "xsi:nil") {
        report.warning("Attribute {http://www.w3.org/2001/XMLSchema-instance}" + name.substr(4) +
                       "=" + value + " is ignored");
    } else if (!name.starts_with("xmlns:") && !name.ends_with(":schemaLocation")) {
        report.error("Unknown attribute '" + name + "=" + value + "' in XML");
    }
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

std::size_t XmlReport::lineAt(std::ptrdiff_t offset) const {
    if (!lines_) {
        const auto text = readFile(path_);
        lines_.emplace(text ? text->view() : std::string_view());
    }
    return lines_->lineAt(offset);
}

std::string XmlReport::lineText(pugi::xml_node node) const {
    return "[Line:" + std::to_string(lineAt(node.offset_debug())) + "] ";
}

void XmlReport::malformed(const XmlFault& fault) const {
    const std::size_t line = lineAt(fault.offset);
    log_.fatal(module::modelDescription, {parseErrorText(line, fault.reason)});
}

void XmlReport::abort(pugi::xml_node node, std::string_view reason) const {
    const std::size_t line = lineAt(node.offset_debug());
    log_.fatal(module::modelDescription, {reason});
    log_.fatal(module::modelDescription, {parseErrorText(line, "parsing aborted")});
    throw ParseAborted{};
}

void XmlReport::recover(pugi::xml_node node, std::string_view reason) const {
    log_.info(module::modelDescription, {lineText(node), "Detected during parsing:"});
    log_.error(module::modelDescription, {reason});
}

void XmlReport::recoverFromValue(pugi::xml_node node, std::string_view kind,
                                 std::string_view attribute, std::string_view value) const {
    std::string reason = "XML element '";
    reason.append(node.name()).append("': could not parse value for ").append(kind);
    reason.append(" attribute '").append(attribute).append("'='").append(value).append("'");
    recover(node, reason);
}

void XmlReport::skip(pugi::xml_node node, std::string_view reason) const {
    log_.error(module::modelDescription, {lineText(node), reason});
    NestedElements nested(*this);
    node.traverse(nested);
}

void XmlReport::skipNested(pugi::xml_node node) const {
    warning(lineText(node) + "Skipping nested XML element '" + node.name() + "'");
}

void XmlReport::skipUnknown(pugi::xml_node node) const {
    skip(node, "Unknown element '" + std::string(node.name()) + "' in XML, skipping");
}

void XmlReport::skipMisplaced(pugi::xml_node node, std::string_view before) const {
    skip(node, "XML element '" + std::string(node.name()) + "' cannot be placed after element '" +
                   std::string(before) + "', skipping");
}

void XmlReport::abortMissing(pugi::xml_node node, std::string_view element,
                             std::string_view attribute) const {
    std::string reason = "Parsing XML element '";
    reason.append(element).append("': required attribute '").append(attribute);
    abort(node, reason.append("' not found"));
}

void readAttributes(const XmlReport& report, pugi::xml_node node,
                    std::span<const char* const> names, std::span<const char*> values) {
    std::size_t place = 0;
    for (auto attribute = node.first_attribute(); attribute;
         attribute = attribute.next_attribute()) {
        place = placeOf(attribute.name(), names, place);
        if (place == names.size()) {
            reportUnknown(report, attribute);
            place = 0;
        } else {
            values[place] = attribute.value();
        }
    }
}

} // namespace fmi_import
