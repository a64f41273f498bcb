#pragma once

#include "fmi_import/model_description.h"
#include "fmi_import/unit_reader.h"
#include "fmi_import/xml_report.h"

#include <cstddef>

namespace fmi_import {

/// Reads the elements of ModelVariables (FMI 2.0 section 2.2.7).
class VariableReader {
  public:
    /// `count` is the number of ScalarVariable elements.
    VariableReader(const XmlReport& report, ModelDescription& description, UnitReader& units,
                   std::size_t count)
        : report_(report),
          description_(description),
          units_(units),
          count_(count) {}

    /// Appends the variable of a ScalarVariable element to the description.
    void read(pugi::xml_node element);

  private:
    using Variable = fmi2_xml_variable_t;

    void readCausality(pugi::xml_node element, const char* text, Variable& variable);
    void readVariability(pugi::xml_node element, const char* text, Variable& variable);
    void readInitial(pugi::xml_node element, const char* text, Variable& variable);
    void checkMultipleSet(pugi::xml_node element, const char* text, const Variable& variable);
    void readType(pugi::xml_node element, Variable& variable);
    /// False when the element has a value that cannot be read and does not count.
    bool readTypeElement(pugi::xml_node element, Variable& variable);
    bool areValuesReadable(pugi::xml_node element, fmi2_base_type_enu_t type,
                           std::span<const char* const> values);
    void checkDerivative(pugi::xml_node element, const char* text);
    void readStart(pugi::xml_node element, const char* text, Variable& variable);
    void refuseStart(pugi::xml_node element, const Variable& variable);
    void requireStart(pugi::xml_node element, Variable& variable);
    bool setStart(pugi::xml_node element, const char* text, Variable& variable);
    bool setIntegerStart(pugi::xml_node element, const char* text, Variable& variable);

    const XmlReport& report_;
    ModelDescription& description_;
    UnitReader& units_;
    std::size_t count_;
};

} // namespace fmi_import
