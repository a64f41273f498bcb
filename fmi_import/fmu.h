#pragma once

#include "FMI2/fmi2_import.h"
#include "fmi_import/log.h"
#include "fmi_import/model_description/model_description.h"
#include "fmi_import/slave/binary.h"

#include <memory>
#include <string>

/// An unpacked FMU with its model description, and its binary and instance once there are such.
struct fmi2_import_t {
    fmi_import::Log log;
    std::string directory; ///< As the application named it.
    std::string absoluteDirectory;
    std::string resourceUri;
    fmi_import::ModelDescription description;
    fmi_import::Binary binary;
    /// The FMU keeps a pointer to it, and may use it as long as its code is in the process.
    std::unique_ptr<fmi2_callback_functions_t> callbacks =
        std::make_unique<fmi2_callback_functions_t>();
    fmi2_component_t component = nullptr; ///< The instance; null whenever no binary is loaded.
};
