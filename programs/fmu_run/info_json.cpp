#include "fmu_run/information.h"
#include "program_support/number_text.h"

#include <nlohmann/json.hpp>

namespace fmu_run {
namespace {

using Json = nlohmann::ordered_json;

Json textOrNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

Json integerOrText(const std::string& text) {
    const auto parsed = Json::parse(text, nullptr, false);
    return parsed.is_number_integer() ? parsed : Json(text);
}

/// The start value in the JSON type of its variable; as text where it is not written as such.
Json startOf(const Variable& variable) {
    if (!variable.start) {
        return {};
    }
    const auto& text = *variable.start;
    switch (variable.type) {
    case VariableType::Boolean:
        return text == "true" || text == "1";
    case VariableType::Real:
        if (const auto number = program_support::numberIn(text)) {
            return *number;
        }
        return text;
    case VariableType::Integer:
    case VariableType::Enumeration:
        return integerOrText(text);
    case VariableType::String:
        break;
    }
    return text;
}

Json jsonOf(const Variable& variable) {
    return {{"name", variable.name},
            {"type", typeName(variable.type)},
            {"causality", variable.causality},
            {"variability", variable.variability},
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
        const auto previous = counts.value(variable.causality, 0);
        counts[variable.causality] = previous + 1;
    }
    return counts;
}

} // namespace

void printInfoJson(std::ostream& stream, const ModelInformation& model) {
    Json json{{"modelName", model.modelName},
              {"description", textOrNull(model.description)},
              {"kind", model.kind},
              {"generationTool", textOrNull(model.generationTool)},
              {"guid", model.guid},
              {"platforms", model.platforms},
              {"defaultExperiment", jsonOf(model.defaultExperiment)},
              {"variableCounts", countsOf(model.variables)},
              {"variables", Json::array()}};
    for (const auto& variable : model.variables) {
        json["variables"].push_back(jsonOf(variable));
    }
    stream << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace fmu_run
