#include "fmi_import/model_description/unit_reader.h"

#include "fmi_import/model_description/enum_text.h"

#include <string>

namespace fmi_import {

void UnitReader::readUnits(const XmlElement& element) {
    for (XmlElement child; report_.xml().nextChild(element, child);) {
        if (isSame(child.name, "Unit")) {
            readUnit(child);
        } else {
            report_.skipUnknown(child);
        }
    }
}

void UnitReader::readUnit(const XmlElement& element) {
    const char* name = element.attribute("name");
    if (name == nullptr) {
        report_.abortMissing(element, "BaseUnit", "name");
    }
    unit(name);
    for (XmlElement child; report_.xml().nextChild(element, child);) {
        if (isSame(child.name, "DisplayUnit")) {
            displayUnits_.insert(orEmpty(child.attribute("name")));
        }
    }
}

void UnitReader::readTypes(const XmlElement& element) {
    for (XmlElement child; report_.xml().nextChild(element, child);) {
        if (isSame(child.name, "SimpleType")) {
            readType(child);
        } else {
            report_.skipUnknown(child);
        }
    }
}

void UnitReader::readType(const XmlElement& element) {
    const char* name = element.attribute("name");
    if (name == nullptr) {
        report_.abortMissing(element, "SimpleType", "name");
    }
    std::optional<DeclaredType> type;
    for (XmlElement child; report_.xml().nextChild(element, child);) {
        const auto baseType = baseTypeFromElement(child.name);
        if (baseType && !type) {
            type = readDeclaredType(child, *baseType);
        }
    }
    if (!type) {
        report_.abort(element, "No specific type given for type definition " + std::string(name));
    }
    types_.try_emplace(name, *type);
}

DeclaredType UnitReader::readDeclaredType(const XmlElement& element, fmi2_base_type_enu_t type) {
    if (type != fmi2_base_type_real) {
        return {type, nullptr};
    }
    checkDisplayUnit(element, element.attribute("displayUnit"));
    return {type, unit(element.attribute("unit"))};
}

fmi2_import_unit_t* UnitReader::unit(const char* name) {
    if (name == nullptr || *name == '\0') {
        return nullptr;
    }
    const auto known = description_.units.find(name);
    if (known != description_.units.end()) {
        return &known->second;
    }
    return &description_.units.try_emplace(name, fmi2_xml_unit_t{name}).first->second;
}

const DeclaredType* UnitReader::declaredType(const char* name, fmi2_base_type_enu_t type) const {
    if (name == nullptr) {
        return nullptr;
    }
    const auto found = types_.find(name);
    if (found == types_.end()) {
        report_.error({"Declared type ", name, " not found in type definitions. Ignoring."});
        return nullptr;
    }
    if (found->second.type != type) {
        report_.error({"Declared type ", name, " does not match variable type. Ignoring."});
        return nullptr;
    }
    return &found->second;
}

void UnitReader::checkDisplayUnit(const XmlElement& element, const char* name) const {
    if (*orEmpty(name) != '\0' && !displayUnits_.contains(name)) {
        report_.abort(element,
                      "Unknown display unit " + std::string(name) + " in real type definition");
    }
}

} // namespace fmi_import
