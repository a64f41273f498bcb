#pragma once

#include "FMI2/fmi2_enums.h"
#include "FMI2/fmi2_import_unit.h"
#include "FMI2/fmi2_types.h"
#include "fmi_import/model_description/name_index.h"
#include "fmi_import/model_description/xml_document.h"

#include <array>
#include <cstdint>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// NOLINTNEXTLINE(readability-identifier-naming): the name that the C interface has
struct fmi2_xml_unit_t {
    const char* name;
};

/// A scalar variable (FMI 2.0 section 2.2.7), kept small: a model description may have 100,000.
// NOLINTNEXTLINE(readability-identifier-naming): the name that the C interface has
struct fmi2_xml_variable_t {
    const char* name;
    const char* description;
    fmi2_import_unit_t* unit; ///< Null where there is none.

    /// The start value in the member of the variable's type; zero or "" where there is none.
    union Start {
        double real;
        int integer; ///< Also of Boolean and Enumeration.
        const char* text;
    } start;

    std::uint32_t valueReference;
    std::uint8_t baseType;
    std::uint8_t causality;
    std::uint8_t variability;
    std::uint8_t initial;
    bool hasStart;
    bool isAlias;

    [[nodiscard]] fmi2_base_type_enu_t type() const {
        return static_cast<fmi2_base_type_enu_t>(baseType);
    }
};

namespace fmi_import {

/// Values of the default experiment (FMI 2.0 section 2.2.5), in the order in which they are read.
enum ExperimentValue { startTime, stopTime, tolerance, stepSize };

struct DefaultExperiment {
    std::array<double, 4> values{0.0, 1.0, 1e-4, 1e-2};
    std::array<bool, 4> isGiven{};
};

/// Optional abilities of a Co-Simulation slave that decide which functions its binary must have,
/// and how many instances it may have (section 4.3.1).
struct Capabilities {
    bool onlyOncePerProcess = false;
    bool getAndSetState = false;
    bool serializeState = false;
    bool directionalDerivative = false;
};

/// What is kept of a model description (section 2.2).
struct ModelDescription {
    FileText text; ///< Where all names and texts lie.
    const char* modelName = "";
    const char* guid = "";
    const char* description = "";
    const char* generationTool = "";
    const char* modelExchangeIdentifier = "";
    const char* coSimulationIdentifier = "";
    unsigned kind = fmi2_fmu_kind_unknown; ///< The sum of fmi2_fmu_kind_me and fmi2_fmu_kind_cs.
    Capabilities capabilities;
    DefaultExperiment defaultExperiment;
    std::map<std::string_view, fmi2_xml_unit_t> units;
    bool hasVariableList = false; ///< There was a ModelVariables element.
    std::vector<fmi2_xml_variable_t> variables;
    std::vector<std::uint32_t> referenceOrder; ///< Positions, see sortByReference().
    NameIndex names;

    /// Position of the variable called `name`, or NameIndex::notFound.
    [[nodiscard]] std::uint32_t find(std::string_view name) const {
        return names.find(name, [&](std::uint32_t at) { return variables[at].name == name; });
    }
};

} // namespace fmi_import
