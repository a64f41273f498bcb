#pragma once

#include "fmi_import/model_description/model_description.h"
#include "fmi_import/model_description/xml_report.h"

#include <map>
#include <optional>
#include <set>
#include <string_view>

namespace fmi_import {

/// A SimpleType (FMI 2.0 section 2.2.3).
struct DeclaredType {
    fmi2_base_type_enu_t type;
    fmi2_import_unit_t* unit; ///< Null where it has none.
};

/// Units and declared types as they are needed while variables are read.
class UnitReader {
  public:
    UnitReader(const XmlReport& report, ModelDescription& description)
        : report_(report),
          description_(description) {}

    /// Reads a UnitDefinitions element (section 2.2.2).
    void readUnits(const XmlElement& element);

    /// Reads a TypeDefinitions element (section 2.2.3).
    void readTypes(const XmlElement& element);

    /// The unit called `name`; one that was not declared is made. Null for null or "".
    fmi2_import_unit_t* unit(const char* name);

    /// The declared type that a variable of base type `type` names; null for null, and with a
    /// message when there is none such.
    const DeclaredType* declaredType(const char* name, fmi2_base_type_enu_t type) const;

    /// Aborts when `name` is given and no unit has such a display unit.
    void checkDisplayUnit(const XmlElement& element, const char* name) const;

  private:
    void readUnit(const XmlElement& element);
    void readType(const XmlElement& element);
    DeclaredType readDeclaredType(const XmlElement& element, fmi2_base_type_enu_t type);

    const XmlReport& report_;
    ModelDescription& description_;
    // Ordered: names that were made up to hash alike would make a hash table slow.
    std::map<std::string_view, DeclaredType> types_;
    std::set<std::string_view> displayUnits_;
};

} // namespace fmi_import
