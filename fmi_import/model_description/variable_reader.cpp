#include "fmi_import/model_description/variable_reader.h"

#include "fmi_import/model_description/enum_text.h"
#include "fmi_import/model_description/number_text.h"
#include "fmi_import/model_description/variable_rules.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>

namespace fmi_import {

namespace {

enum VariableAttribute {
    nameAttribute,
    valueReference,
    causality,
    variability,
    initial,
    descriptionAttribute,
    multipleSet,
    variableAttributeCount
};

constexpr std::array<const char*, variableAttributeCount> variableAttributes{
    "name",
    "valueReference",
    "causality",
    "variability",
    "initial",
    "description",
    "canHandleMultipleSetPerTimeInstant"};

enum TypeAttribute {
    start,
    unit,
    declaredType,
    displayUnit,
    minimum,
    maximum,
    nominal,
    quantity,
    relativeQuantity,
    unbounded,
    derivative,
    reinit,
    typeAttributeCount
};

constexpr std::array<const char*, typeAttributeCount> typeAttributes{
    "start",   "unit",     "declaredType",     "displayUnit", "min",        "max",
    "nominal", "quantity", "relativeQuantity", "unbounded",   "derivative", "reinit"};

/// True when the element of a base type may have this attribute.
bool belongsTo(TypeAttribute attribute, fmi2_base_type_enu_t type) {
    switch (attribute) {
    case start:
    case declaredType:
        return true;
    case minimum:
    case maximum:
    case quantity:
        return type != fmi2_base_type_bool && type != fmi2_base_type_str;
    default:
        return type == fmi2_base_type_real;
    }
}

fmi2_causality_enu_t causalityOf(const fmi2_xml_variable_t& variable) {
    return static_cast<fmi2_causality_enu_t>(variable.causality);
}

fmi2_variability_enu_t variabilityOf(const fmi2_xml_variable_t& variable) {
    return static_cast<fmi2_variability_enu_t>(variable.variability);
}

fmi2_initial_enu_t initialOf(const fmi2_xml_variable_t& variable) {
    return static_cast<fmi2_initial_enu_t>(variable.initial);
}

} // namespace

void VariableReader::read(const XmlElement& element) {
    ++count_;
    std::array<const char*, variableAttributeCount> values{};
    readAttributes(report_, element, variableAttributes, values);
    for (const VariableAttribute required : {valueReference, nameAttribute}) {
        if (values[required] == nullptr) {
            report_.abortMissing(element, "ScalarVariable", variableAttributes[required]);
        }
    }
    const auto reference = unsignedFromText(values[valueReference]);
    if (!reference) {
        report_.recoverFromValue(element, "unsigned", "valueReference", values[valueReference]);
        return;
    }
    Variable variable{};
    variable.name = orEmpty(values[nameAttribute]);
    variable.description = orEmpty(values[descriptionAttribute]);
    variable.valueReference = *reference;
    readCausality(element, values[causality], variable);
    readVariability(element, values[variability], variable);
    readInitial(element, values[initial], variable);
    checkMultipleSet(element, values[multipleSet], variable);
    readType(element, variable);
    append(variable);
}

/// Grows by a half: doubling would take more memory than the text may cost.
void VariableReader::append(const Variable& variable) {
    auto& variables = description_.variables;
    if (variables.size() == variables.capacity()) {
        constexpr std::size_t least = 64;
        variables.reserve(std::max(least, variables.size() + variables.size() / 2));
    }
    variables.push_back(variable);
}

std::size_t VariableReader::finish() const {
    if (largestDerivative_ > count_) {
        abortForDerivative();
    }
    return count_;
}

void VariableReader::readCausality(const XmlElement& element, const char* text,
                                   Variable& variable) {
    fmi2_causality_enu_t value = fmi2_causality_enu_local;
    if (text != nullptr) {
        value = fromText(text, fmi2_causality_to_string, fmi2_causality_enu_unknown);
    }
    if (value == fmi2_causality_enu_unknown) {
        report_.recoverFromValue(element, "enumeration", "causality", text);
        value = fmi2_causality_enu_local;
    }
    variable.causality = static_cast<std::uint8_t>(value);
}

void VariableReader::readVariability(const XmlElement& element, const char* text,
                                     Variable& variable) {
    fmi2_variability_enu_t value = fmi2_variability_enu_continuous;
    if (text != nullptr) {
        value = fromText(text, fmi2_variability_to_string, fmi2_variability_enu_unknown);
    }
    if (value == fmi2_variability_enu_unknown) {
        report_.recoverFromValue(element, "enumeration", "variability", text);
        value = fmi2_variability_enu_continuous;
    }
    const fmi2_causality_enu_t causalityValue = causalityOf(variable);
    if (!isAllowed(value, causalityValue)) {
        const fmi2_variability_enu_t usual = defaultVariability(causalityValue);
        report_.recover(element, std::string("Invalid combination of variability ") +
                                     fmi2_variability_to_string(value) + " and causality " +
                                     fmi2_causality_to_string(causalityValue) + " for variable '" +
                                     variable.name + "'. Setting variability to '" +
                                     fmi2_variability_to_string(usual) + "'");
        value = usual;
    }
    variable.variability = static_cast<std::uint8_t>(value);
}

void VariableReader::readInitial(const XmlElement& element, const char* text, Variable& variable) {
    const fmi2_initial_enu_t usual = defaultInitial(variabilityOf(variable), causalityOf(variable));
    fmi2_initial_enu_t value = usual;
    if (text != nullptr) {
        value = fromText(text, fmi2_initial_to_string, fmi2_initial_enu_unknown);
    }
    if (text != nullptr && value == fmi2_initial_enu_unknown) {
        report_.recoverFromValue(element, "enumeration", "initial", text);
        value = usual;
    } else if (text != nullptr &&
               !isAllowed(value, variabilityOf(variable), causalityOf(variable))) {
        report_.recover(element,
                        std::string("Initial '") + text + "' is not allowed for variability '" +
                            fmi2_variability_to_string(variabilityOf(variable)) +
                            "' and causality '" + fmi2_causality_to_string(causalityOf(variable)) +
                            "'. Setting initial to '" + fmi2_initial_to_string(usual) +
                            "' for variable '" + variable.name + "'");
        value = usual;
    }
    variable.initial = static_cast<std::uint8_t>(value);
}

void VariableReader::checkMultipleSet(const XmlElement& element, const char* text,
                                      const Variable& variable) {
    if (text == nullptr) {
        return;
    }
    const auto value = booleanFromText(text);
    if (!value) {
        report_.recoverFromValue(element, "enumeration", variableAttributes[multipleSet], text);
    } else if (!*value && causalityOf(variable) != fmi2_causality_enu_input) {
        report_.recover(element, "Only variables with causality 'input' can have "
                                 "canHandleMultipleSetPerTimeInstant=false");
    }
}

void VariableReader::readType(const XmlElement& element, Variable& variable) {
    const char* typeName = nullptr;
    bool isRead = false;
    for (XmlElement child; report_.xml().nextChild(element, child);) {
        if (isSame(child.name, "Annotations")) {
            continue;
        }
        const auto type = baseTypeFromElement(child.name);
        if (!type) {
            report_.skipUnknown(child);
        } else if (typeName != nullptr) {
            report_.skipMisplaced(child, typeName + std::string("Variable"));
        } else {
            typeName = child.name;
            variable.baseType = static_cast<std::uint8_t>(*type);
            isRead = readTypeElement(child, variable);
        }
    }
    if (!isRead) {
        report_.error(
            {"No variable type element for variable ", variable.name, ". Assuming Real."});
        variable.baseType = fmi2_base_type_real;
        variable.unit = nullptr;
        variable.hasStart = false;
        variable.start.real = 0.0;
    }
}

bool VariableReader::readTypeElement(const XmlElement& element, Variable& variable) {
    std::array<const char*, typeAttributeCount> values{};
    readAttributes(report_, element, typeAttributes, values);
    for (int attribute = 0; attribute < typeAttributeCount; ++attribute) {
        const char*& value = values[static_cast<std::size_t>(attribute)];
        if (value != nullptr &&
            !belongsTo(static_cast<TypeAttribute>(attribute), variable.type())) {
            report_.warning({"Attribute '", typeAttributes[static_cast<std::size_t>(attribute)],
                             "' not processed by element '", element.name, "' handle"});
            value = nullptr;
        }
    }
    if (!areValuesReadable(element, variable.type(), values)) {
        return false;
    }
    const DeclaredType* declared = units_.declaredType(values[declaredType], variable.type());
    units_.checkDisplayUnit(element, values[displayUnit]);
    checkDerivative(values[derivative]);
    variable.unit =
        values[unit] == nullptr && declared != nullptr ? declared->unit : units_.unit(values[unit]);
    if (variable.type() != fmi2_base_type_real &&
        variabilityOf(variable) == fmi2_variability_enu_continuous) {
        report_.recover(element, "Only Real variables can have variability='continuous'");
    }
    readStart(element, values[start], variable);
    return true;
}

bool VariableReader::areValuesReadable(const XmlElement& element, fmi2_base_type_enu_t type,
                                       std::span<const char* const> values) {
    const bool isReal = type == fmi2_base_type_real;
    for (const TypeAttribute bound : {minimum, maximum, nominal}) {
        const char* text = values[bound];
        const bool readable = text == nullptr || (isReal ? realFromText(text).has_value()
                                                         : integerFromText(text).has_value());
        if (!readable) {
            report_.recoverFromValue(element, isReal ? "real" : "integer", typeAttributes[bound],
                                     text);
            return false;
        }
    }
    for (const TypeAttribute flag : {relativeQuantity, unbounded, reinit}) {
        if (values[flag] != nullptr && !booleanFromText(values[flag])) {
            report_.recoverFromValue(element, "enumeration", typeAttributes[flag], values[flag]);
            return false;
        }
    }
    return true;
}

void VariableReader::checkDerivative(const char* text) {
    if (text == nullptr) {
        return;
    }
    const auto index = unsignedFromText(text);
    if (!index || *index == 0) {
        abortForDerivative();
    }
    largestDerivative_ = std::max<std::size_t>(largestDerivative_, *index);
}

void VariableReader::abortForDerivative() const {
    report_.abort("The 'derivative' attribute must have a value between 1 and the number of model "
                  "variables.");
}

void VariableReader::readStart(const XmlElement& element, const char* text, Variable& variable) {
    if (variable.type() == fmi2_base_type_str) {
        variable.start.text = "";
    }
    const bool mayHaveStart = initialOf(variable) != fmi2_initial_enu_calculated &&
                              causalityOf(variable) != fmi2_causality_enu_independent;
    if (text == nullptr) {
        requireStart(element, variable);
    } else if (mayHaveStart) {
        variable.hasStart = setStart(element, text, variable);
    } else {
        refuseStart(element, variable);
    }
}

void VariableReader::requireStart(const XmlElement& element, Variable& variable) {
    if (needsStart(initialOf(variable), variabilityOf(variable), causalityOf(variable))) {
        report_.recover(element, "Start attribute is required for this causality, variability and "
                                 "initial combination");
        variable.hasStart = true;
    }
}

void VariableReader::refuseStart(const XmlElement& element, const Variable& variable) {
    const bool isCalculated = initialOf(variable) == fmi2_initial_enu_calculated;
    report_.recover(element,
                    std::string("Start attribute is not allowed for variables with ") +
                        (isCalculated ? "initial='calculated'" : "causality='independent'"));
    report_.warning({"Attribute 'start' not processed by element '", element.name, "' handle"});
}

bool VariableReader::setStart(const XmlElement& element, const char* text, Variable& variable) {
    switch (variable.type()) {
    case fmi2_base_type_str:
        variable.start.text = orEmpty(text);
        return true;
    case fmi2_base_type_int:
    case fmi2_base_type_enum:
        return setIntegerStart(element, text, variable);
    case fmi2_base_type_bool:
        if (const auto value = booleanFromText(text)) {
            variable.start.integer = *value ? fmi2_true : fmi2_false;
            return true;
        }
        report_.recoverFromValue(element, "enumeration", "start", text);
        return false;
    default:
        if (const auto value = realFromText(text)) {
            variable.start.real = *value;
            return true;
        }
        report_.recoverFromValue(element, "real", "start", text);
        return false;
    }
}

bool VariableReader::setIntegerStart(const XmlElement& element, const char* text,
                                     Variable& variable) {
    const auto value = integerFromText(text);
    if (!value) {
        report_.recoverFromValue(element, "integer", "start", text);
        report_.error({"Start value zero will be assumed."});
    }
    variable.start.integer = value.value_or(0);
    return true;
}

} // namespace fmi_import
