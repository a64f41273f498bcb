#include "fmi_import/unit_reader.h"

namespace fmi_import {

namespace {

pugi::xml_node typeChild(pugi::xml_node element) {
    return element.find_child(
        [](pugi::xml_node child) { return baseTypeFromElement(child.name()).has_value(); });
}

} // namespace

std::optional<fmi2_base_type_enu_t> baseTypeFromElement(const char* name) {
    for (int type = fmi2_base_type_real; type <= fmi2_base_type_enum; ++type) {
        if (isSame(name, fmi2_base_type_to_string(static_cast<fmi2_base_type_enu_t>(type)))) {
            return static_cast<fmi2_base_type_enu_t>(type);
        }
    }
    return std::nullopt;
}

void UnitReader::readUnits(pugi::xml_node element) {
    for (const pugi::xml_node child : element.children()) {
        if (std::string_view(child.name()) == "Unit") {
            readUnit(child);
        } else if (child.type() == pugi::node_element) {
            report_.skipUnknown(child);
        }
    }
}

void UnitReader::readUnit(pugi::xml_node element) {
    const pugi::xml_attribute name = element.attribute("name");
    if (!name) {
        report_.abortMissing(element, "BaseUnit", "name");
    }
    unit(name.value());
    for (const pugi::xml_node display : element.children("DisplayUnit")) {
        displayUnits_.insert(display.attribute("name").value());
    }
}

void UnitReader::readTypes(pugi::xml_node element) {
    for (const pugi::xml_node child : element.children()) {
        if (std::string_view(child.name()) == "SimpleType") {
            readType(child);
        } else if (child.type() == pugi::node_element) {
            report_.skipUnknown(child);
        }
    }
}

void UnitReader::readType(pugi::xml_node element) {
    const pugi::xml_attribute name = element.attribute("name");
    if (!name) {
        report_.abortMissing(element, "SimpleType", "name");
    }
    const pugi::xml_node type = typeChild(element);
    if (!type) {
        report_.abort(element,
                      "No specific type given for type definition " + std::string(name.value()));
    }
    const auto baseType = *baseTypeFromElement(type.name());
    const bool isReal = baseType == fmi2_base_type_real;
    if (isReal && type.attribute("displayUnit")) {
        checkDisplayUnit(type, type.attribute("displayUnit").value());
    }
    types_.try_emplace(
        name.value(),
        DeclaredType{baseType, isReal ? unit(type.attribute("unit").value()) : nullptr});
}

fmi2_import_unit_t* UnitReader::unit(const char* name) {
    if (name == nullptr || *name == '\0') {
        return nullptr;
    }
    const auto known = description_.units.find(name);
    if (known != description_.units.end()) {
        return &known->second;
    }
    const char* kept = description_.texts.keep(name);
    return &description_.units.try_emplace(kept, fmi2_xml_unit_t{kept}).first->second;
}

const DeclaredType* UnitReader::declaredType(const char* name, fmi2_base_type_enu_t type) const {
    if (name == nullptr) {
        return nullptr;
    }
    const auto found = types_.find(name);
    if (found == types_.end()) {
        report_.error("Declared type " + std::string(name) +
                      " not found in type definitions. Ignoring.");
        return nullptr;
    }
    if (found->second.type != type) {
        report_.error("Declared type " + std::string(name) +
                      " does not match variable type. Ignoring.");
        return nullptr;
    }
    return &found->second;
}

void UnitReader::checkDisplayUnit(pugi::xml_node element, const char* name) const {
    if (*orEmpty(name) != '\0' && !displayUnits_.contains(name)) {
        report_.abort(element,
                      "Unknown display unit " + std::string(name) + " in real type definition");
    }
}

} // namespace fmi_import
