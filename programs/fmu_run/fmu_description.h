#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fmu_run {

/// Types of variables (FMI 2.0 section 2.2.7).
enum class VariableType { Real, Integer, Boolean, String, Enumeration };

/// The name of a type in the FMI standard, such as "Real".
std::string_view typeName(VariableType type);

struct Variable {
    std::string name;
    VariableType type;
    std::string causality;   ///< The standard's word, such as "calculatedParameter".
    std::string variability; ///< The standard's word, such as "tunable".
    std::optional<std::string> start;
    std::string unit; ///< Empty: none.
    std::string description;
};

/// A default experiment (FMI 2.0 section 2.2.5). Times that the model description does not give
/// have the FMI library's own defaults.
struct DefaultExperiment {
    double startTime;
    double stopTime;
    double stepSize; ///< Seconds between two points.
};

/// What a model description tells about an FMU.
struct ModelInformation {
    std::string modelName;
    std::string kind; ///< "Co-Simulation", "Model Exchange" or both.
    bool coSimulation = false;
    std::string description;
    std::string generationTool;
    std::string guid;
    std::vector<std::string> platforms; ///< Folders below binaries/, such as "linux64".
    DefaultExperiment defaultExperiment{};
    std::vector<Variable> variables; ///< In the order of the model description.

    /// The variable of that name; null when there is none.
    [[nodiscard]] const Variable* find(std::string_view name) const;
};

/// What the FMI library complained about while it read an FMU, each text one line.
struct LibraryMessages {
    std::vector<std::string> errors;
    std::vector<std::string> warnings; ///< It went on with a guess or left something out.
};

/// Reads the model description in the directory that an FMU was unpacked into. Throws InputError
/// when there is none that can be read.
ModelInformation readModelInformation(const std::string& unpackDirectory,
                                      LibraryMessages* messages = nullptr);

/// Unpacks `fmuPath` into an existing directory and reads its model description. Throws InputError,
/// with the library's reason, when it is no archive of FMI 2.0.
ModelInformation unpackModel(const std::string& fmuPath, const std::string& unpackDirectory,
                             LibraryMessages* messages = nullptr);

/// Throws InputError when there is no file of that path.
void requireFile(const std::string& fmuPath);

} // namespace fmu_run
