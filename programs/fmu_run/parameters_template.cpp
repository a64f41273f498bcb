#include "fmu_run/information.h"

#include <pugixml.hpp>

namespace fmu_run {
namespace {

/// The value as the parameters file takes it: a Boolean is written as a number there.
std::string valueOf(const Variable& parameter) {
    std::string text = parameter.start.value_or("");
    if (parameter.type != VariableType::Boolean) {
        return text;
    }
    return text == "true" || text == "1" ? "1" : "0";
}

/// The file knows no enumerations; their values are integers.
std::string typeOf(const Variable& parameter) {
    const auto type =
        parameter.type == VariableType::Enumeration ? VariableType::Integer : parameter.type;
    return std::string(typeName(type));
}

std::string commentOf(const Variable& parameter) {
    std::string text =
        " " + (parameter.description.empty() ? parameter.name : parameter.description);
    if (parameter.type == VariableType::Enumeration) {
        text += " (number of the enumeration's item)";
    }
    if (!parameter.unit.empty()) {
        text += " [" + parameter.unit + "]";
    }
    return text + ", start value " + parameter.start.value_or("not given") + " ";
}

void appendParameter(pugi::xml_node& parameters, const Variable& parameter) {
    parameters.append_child(pugi::node_comment).set_value(commentOf(parameter).c_str());
    auto element = parameters.append_child("Parameter");
    element.append_attribute("Name") = parameter.name.c_str();
    element.append_attribute("Type") = typeOf(parameter).c_str();
    const auto value = valueOf(parameter);
    // Readers drop a text of nothing but white space unless it is marked as data.
    const bool blank = value.find_first_not_of(" \t\r\n") == std::string::npos && !value.empty();
    element.append_child(blank ? pugi::node_cdata : pugi::node_pcdata).set_value(value.c_str());
}

} // namespace

void printParametersFile(std::ostream& stream, const ModelInformation& model) {
    pugi::xml_document document;
    auto declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    document.append_child(pugi::node_comment)
        .set_value((" Parameters of " + model.modelName + " with their start values ").c_str());
    auto root = document.append_child("FMUSettings");
    root.append_attribute("Version") = "1.0";
    auto parameters = root.append_child("Parameters");
    for (const auto& variable : model.variables) {
        if (variable.causality == "parameter") {
            appendParameter(parameters, variable);
        }
    }
    document.save(stream, "  ", pugi::format_default, pugi::encoding_utf8);
}

} // namespace fmu_run
