#pragma once

#include "programs/fmu_run/variable_value.h"

#include <cstddef>
#include <fmilib.h>
#include <optional>
#include <string>
#include <vector>

namespace fmu_run {

/// A variable of a model description (FMI 2.0 section 2.2.7).
struct Variable {
    std::string name;
    fmi2_base_type_enu_t type;
    fmi2_causality_enu_t causality;
    fmi2_variability_enu_t variability;
    std::optional<VariableValue> start;
    std::string unit; ///< Empty: none.
    std::string description;
    fmi2_value_reference_t valueReference;
};

/// A default experiment (FMI 2.0 section 2.2.5). Times that the model description does not give
/// have the FMI library's own defaults.
struct DefaultExperiment {
    double startTime;
    double stopTime;
    double stepSize; ///< Seconds between two points.
};

/// What an FMU tells about itself: its model description, and the platforms that it is made for.
struct FmuDescription {
    std::string modelName;
    std::string kind; ///< "Co-Simulation", "Model Exchange" or both.
    bool coSimulation = false;
    std::string description;
    std::string generationTool;
    std::string guid;
    std::vector<std::string> platforms; ///< Folders below binaries/ with a library in
                                        ///< them, such as "linux64".
    DefaultExperiment defaultExperiment{};
    std::vector<Variable> variables; ///< In the order of the model description.
};

/// The start value of a variable that has one, for people: as textOf(), but of a Boolean "true" or
/// "false".
std::string startText(const Variable& variable);

/// What the FMI library complained about while it read an FMU, each text one line.
struct LibraryMessages {
    std::vector<std::string> errors;
    std::vector<std::string> warnings; ///< It went on with a guess or left something out.
    std::size_t dropped = 0;           ///< Those after the first thousand of each.
};

/// Reads the description of the FMU `fmuPath` from its archive: nothing else of it is unpacked.
///
/// @throws program_support::InputError with the reason when it is no archive of FMI 2.0.
FmuDescription describeFmu(const std::string& fmuPath);

/// Unpacks `fmuPath` into an existing directory and reads its description.
///
/// @throws program_support::InputError with the library's reason when it is no archive of FMI 2.0.
FmuDescription unpackFmu(const std::string& fmuPath, const std::string& unpackDirectory,
                         LibraryMessages* messages = nullptr);

} // namespace fmu_run
