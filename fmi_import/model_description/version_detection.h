#pragma once

#include "FMI/fmi_version.h"
#include "fmi_import/log.h"

#include <string>

namespace fmi_import {

/// Reads the FMI version from the start tag of the model description in `directory` (FMI 2.0
/// section 2.2.1); the rest of the file, which may be large, is not looked at. Every failure is
/// logged and answered with fmi_version_unknown_enu.
fmi_version_enu_t detectVersion(const Log& log, const std::string& directory);

} // namespace fmi_import
