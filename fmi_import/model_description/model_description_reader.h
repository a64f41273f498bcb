#pragma once

#include "fmi_import/log.h"
#include "fmi_import/model_description/model_description.h"

#include <optional>
#include <string>

namespace fmi_import {

/// Reads `<directory>/modelDescription.xml`. Nothing on failure, which has been logged.
///
/// @param checkNames  Report variables that share one name.
std::optional<ModelDescription> readModelDescription(const Log& log, const std::string& directory,
                                                     bool checkNames);

/// True when `text` can be the name of a C function: such a name is harmless as part of a path.
bool isCIdentifier(std::string_view text);

} // namespace fmi_import
