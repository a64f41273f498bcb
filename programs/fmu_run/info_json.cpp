#include "programs/fmu_run/info_json.h"

#include "programs/support/terminal_text.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <vector>

namespace fmu_run {
namespace {

using Json = nlohmann::ordered_json;

Json textOrNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

/// The start value in the JSON type of its variable; a number that JSON does not have as text.
Json startOf(const Variable& variable) {
    if (!variable.start) {
        return {};
    }
    if (variable.type == fmi2_base_type_bool) {
        return std::get<std::int32_t>(*variable.start) != 0;
    }
    const auto* real = std::get_if<double>(&*variable.start);
    if (real != nullptr && !std::isfinite(*real)) {
        return textOf(*variable.start);
    }
    return std::visit([](const auto& value) { return Json(value); }, *variable.start);
}

Json jsonOf(const Variable& variable) {
    return {{"name", variable.name},
            {"type", fmi2_base_type_to_string(variable.type)},
            {"causality", fmi2_causality_to_string(variable.causality)},
            {"variability", fmi2_variability_to_string(variable.variability)},
            {"start", startOf(variable)},
            {"unit", textOrNull(variable.unit)},
            {"description", textOrNull(variable.description)}};
}

Json jsonOf(const DefaultExperiment& experiment) {
    return {{"startTime", experiment.startTime},
            {"stopTime", experiment.stopTime},
            {"stepSize", experiment.stepSize}};
}

Json countsOf(const std::vector<Variable>& variables) {
    Json counts = Json::object();
    for (const auto& variable : variables) {
        const char* causality = fmi2_causality_to_string(variable.causality);
        counts[causality] = counts.value(causality, 0) + 1;
    }
    return counts;
}

} // namespace

void printInfoJson(std::ostream& stream, const FmuDescription& fmu) {
    Json json{{"modelName", fmu.modelName},
              {"description", textOrNull(fmu.description)},
              {"kind", fmu.kind},
              {"generationTool", textOrNull(fmu.generationTool)},
              {"guid", fmu.guid},
              {"platforms", fmu.platforms},
              {"defaultExperiment", jsonOf(fmu.defaultExperiment)},
              {"variableCounts", countsOf(fmu.variables)},
              {"variables", Json::array()}};
    for (const auto& variable : fmu.variables) {
        json["variables"].push_back(jsonOf(variable));
    }
    stream << program_support::terminalJson(
                  json.dump(2, ' ', false, Json::error_handler_t::replace))
           << '\n';
}

} // namespace fmu_run
