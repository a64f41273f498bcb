#include "programs/fmu_run/parameters_template.h"

#include "programs/fmu_run/shared_references.h"
#include "programs/support/terminal_text.h"

#include <pugixml.hpp>

#include <sstream>

namespace fmu_run {
namespace {

/// The file knows no enumerations; their values are integers.
const char* typeOf(const Variable& parameter) {
    return fmi2_base_type_to_string(parameter.type == fmi2_base_type_enum ? fmi2_base_type_int
                                                                          : parameter.type);
}

std::string commentOf(const Variable& parameter) {
    std::string text =
        " " + (parameter.description.empty() ? parameter.name : parameter.description);
    if (parameter.type == fmi2_base_type_enum) {
        text += " (number of the enumeration's item)";
    }
    if (!parameter.unit.empty()) {
        text += " [" + parameter.unit + "]";
    }
    return text + ", start value " + (parameter.start ? startText(parameter) : "not given") + " ";
}

void appendParameter(pugi::xml_node& parameters, const Variable& parameter) {
    parameters.append_child(pugi::node_comment).set_value(commentOf(parameter).c_str());
    auto element = parameters.append_child("Parameter");
    element.append_attribute("Name") = parameter.name.c_str();
    element.append_attribute("Type") = typeOf(parameter);
    const auto value = parameter.start ? textOf(*parameter.start) : "";
    // Readers drop a text of nothing but white space unless it is marked as data.
    const bool blank = value.find_first_not_of(" \t\r\n") == std::string::npos && !value.empty();
    element.append_child(blank ? pugi::node_cdata : pugi::node_pcdata).set_value(value.c_str());
}

} // namespace

void printParametersFile(std::ostream& stream, const FmuDescription& fmu) {
    pugi::xml_document document;
    auto declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    document.append_child(pugi::node_comment)
        .set_value((" Parameters of " + fmu.modelName + " with their start values ").c_str());
    auto root = document.append_child("FMUSettings");
    root.append_attribute("Version") = "1.0";
    auto parameters = root.append_child("Parameters");
    const SharedReferences references(fmu);
    for (const auto& variable : fmu.variables) {
        if (variable.causality != fmi2_causality_enu_parameter) {
            continue;
        }
        if (const auto* other = references.setInsteadOf(variable)) {
            const auto text = " " + variable.name + " is left out: " + other->name +
                              " has its value reference and would be set instead ";
            parameters.append_child(pugi::node_comment).set_value(text.c_str());
        } else {
            appendParameter(parameters, variable);
        }
    }
    std::ostringstream text;
    document.save(text, "  ", pugi::format_default, pugi::encoding_utf8);
    stream << program_support::terminalXml(text.str());
}

} // namespace fmu_run
