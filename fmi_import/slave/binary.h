#pragma once

#include "FMI2/fmi2_function_types.h"
#include "fmi_import/log.h"
#include "fmi_import/model_description/model_description.h"
#include "platform/shared_library.h"

#include <string>

namespace fmi_import {

/// The functions of a Co-Simulation binary (FMI 2.0 sections 2.1 and 4.2) that can be called.
struct FmuFunctions {
    fmi2_get_types_platform_ft getTypesPlatform = nullptr;
    fmi2_get_version_ft getVersion = nullptr;
    fmi2_set_debug_logging_ft setDebugLogging = nullptr;
    fmi2_terminate_ft terminate = nullptr;
    fmi2_reset_ft reset = nullptr;
    fmi2_instantiate_ft instantiate = nullptr;
    fmi2_free_instance_ft freeInstance = nullptr;
    fmi2_setup_experiment_ft setupExperiment = nullptr;
    fmi2_enter_initialization_mode_ft enterInitializationMode = nullptr;
    fmi2_exit_initialization_mode_ft exitInitializationMode = nullptr;
    fmi2_get_real_ft getReal = nullptr;
    fmi2_get_integer_ft getInteger = nullptr;
    fmi2_get_boolean_ft getBoolean = nullptr;
    fmi2_get_string_ft getString = nullptr;
    fmi2_set_real_ft setReal = nullptr;
    fmi2_set_integer_ft setInteger = nullptr;
    fmi2_set_boolean_ft setBoolean = nullptr;
    fmi2_set_string_ft setString = nullptr;
    fmi2_do_step_ft doStep = nullptr;
};

/// The loaded binary of an FMU.
class Binary {
  public:
    /// Loads the binary called `identifier` of this platform.
    ///
    /// @param directory          The unpacked FMU, as the application named it; for messages.
    /// @param absoluteDirectory  The same, independent of the current directory.
    /// @param capabilities       Those whose functions are missing are taken away.
    /// @return False on failure, which has been logged; nothing stays loaded then.
    bool load(const Log& log, const std::string& directory, const std::string& absoluteDirectory,
              const std::string& identifier, Capabilities& capabilities);

    /// Unloads the binary; does nothing when none is loaded.
    void unload(const Log& log);

    [[nodiscard]] bool isLoaded() const { return library_.isOpen(); }

    /// Whether the code of a binary that was loaded once is still in the process: what others have
    /// loaded, too, or what does not let itself be unloaded stays.
    [[nodiscard]] bool isCodeLeft() const;

    [[nodiscard]] const FmuFunctions& functions() const { return functions_; }

  private:
    platform::SharedLibrary library_;
    std::string path_; ///< Of the one loaded last.
    FmuFunctions functions_;
};

} // namespace fmi_import
