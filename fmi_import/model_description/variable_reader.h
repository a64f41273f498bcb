#pragma once

#include "fmi_import/model_description/model_description.h"
#include "fmi_import/model_description/unit_reader.h"
#include "fmi_import/model_description/xml_report.h"

#include <cstddef>

namespace fmi_import {

/// Reads the elements of ModelVariables (FMI 2.0 section 2.2.7).
class VariableReader {
  public:
    VariableReader(const XmlReport& report, ModelDescription& description, UnitReader& units)
        : report_(report),
          description_(description),
          units_(units) {}

    /// Appends the variable of a ScalarVariable element to the description.
    void read(const XmlElement& element);

    /// Checks what needs all variables; answers the number of ScalarVariable elements.
    std::size_t finish() const;

  private:
    using Variable = fmi2_xml_variable_t;

    void readCausality(const XmlElement& element, const char* text, Variable& variable);
    void readVariability(const XmlElement& element, const char* text, Variable& variable);
    void readInitial(const XmlElement& element, const char* text, Variable& variable);
    void checkMultipleSet(const XmlElement& element, const char* text, const Variable& variable);
    void append(const Variable& variable);
    void readType(const XmlElement& element, Variable& variable);
    /// False when the element has a value that cannot be read and does not count.
    bool readTypeElement(const XmlElement& element, Variable& variable);
    bool areValuesReadable(const XmlElement& element, fmi2_base_type_enu_t type,
                           std::span<const char* const> values);
    void checkDerivative(const char* text);
    [[noreturn]] void abortForDerivative() const;
    void readStart(const XmlElement& element, const char* text, Variable& variable);
    void refuseStart(const XmlElement& element, const Variable& variable);
    void requireStart(const XmlElement& element, Variable& variable);
    bool setStart(const XmlElement& element, const char* text, Variable& variable);
    bool setIntegerStart(const XmlElement& element, const char* text, Variable& variable);

    const XmlReport& report_;
    ModelDescription& description_;
    UnitReader& units_;
    std::size_t count_ = 0;
    std::size_t largestDerivative_ = 0; ///< The largest index that a derivative refers to.
};

} // namespace fmi_import
