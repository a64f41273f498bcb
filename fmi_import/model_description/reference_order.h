#pragma once

#include "fmi_import/model_description/model_description.h"
#include "fmi_import/model_description/xml_report.h"

#include <cstdint>

namespace fmi_import {

/// Sorts the variables' positions into `referenceOrder`: by type (Integer and Enumeration
/// together), value reference, causality, variability, position.
void sortByReference(ModelDescription& description);

/// Marks aliases: variables of one type and value reference, except the first in reference order.
/// Sets that contradict themselves (two start values, or constants with others) are removed.
void resolveAliases(const XmlReport& report, ModelDescription& description);

/// The first variable of this type and value reference; null when there is none.
const fmi2_xml_variable_t* findByReference(const ModelDescription& description,
                                           fmi2_base_type_enu_t type, std::uint32_t reference);

} // namespace fmi_import
