#pragma once

#include "fmi_import/model_description/xml_document.h"

#include <cstddef>
#include <cstdint>
#include <fmilib.h>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace fmu_run {

/// The element of a type (FMI 2.0 sections 2.2.3 and 2.2.7). Texts are null where it has none.
struct DescribedType {
    std::size_t line = 0;
    fmi2_base_type_enu_t type = fmi2_base_type_real;
    const char* start = nullptr;
    const char* minimum = nullptr;
    const char* maximum = nullptr;
    const char* unit = nullptr;
    const char* displayUnit = nullptr;
    const char* declaredType = nullptr;
    const char* derivative = nullptr;
};

/// A ScalarVariable element. Enumerations that FMI does not know are "unknown".
struct DescribedVariable {
    std::size_t line = 0;
    const char* name = "";
    std::optional<std::uint32_t> valueReference;
    fmi2_causality_enu_t causality = fmi2_causality_enu_local;
    fmi2_variability_enu_t variability = fmi2_variability_enu_continuous;
    std::optional<fmi2_initial_enu_t> givenInitial;
    std::optional<DescribedType> element;
};

/// An Unknown element (section 2.2.8).
struct DescribedUnknown {
    std::size_t line = 0;
    const char* index = "";
};

/// The DefaultExperiment element (section 2.2.5).
struct DescribedExperiment {
    std::size_t line = 0;
    const char* startTime = nullptr;
    const char* stopTime = nullptr;
    const char* stepSize = nullptr;
};

/// What a model description says, to the letter and with its lines: the import library corrects
/// what it can and does not tell lines.
struct DescribedModel {
    fmi_import::FileText text;        ///< Where all texts lie.
    const char* identifier = nullptr; ///< Of Co-Simulation; null where that is not offered.
    bool handlesVariableStep = false;
    DescribedExperiment experiment;
    std::map<std::string_view, std::set<std::string_view>> units; ///< To their display units.
    std::map<std::string_view, DescribedType> types;
    std::vector<DescribedVariable> variables;
    std::vector<DescribedUnknown> outputs;
    std::vector<DescribedUnknown> derivatives;
    std::vector<DescribedUnknown> initialUnknowns;
};

/// Reads a modelDescription.xml; nothing when there is none, it is not well-formed, or of another
/// version than FMI 2.0.
std::optional<DescribedModel> readDescribedModel(const std::string& path);

} // namespace fmu_run
