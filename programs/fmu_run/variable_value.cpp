#include "fmu_run/variable_value.h"

#include "program_support/input_error.h"
#include "program_support/number_text.h"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <utility>

namespace fmu_run {

using program_support::InputError;

namespace {

std::int32_t parseInteger(const std::string& text, const std::string& place) {
    std::int32_t value = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || rest != end) {
        throw InputError(place + " '" + text + "' is not an integer of 32 bits; write it like 3");
    }
    return value;
}

std::int32_t parseBoolean(const std::string& text, const std::string& place) {
    if (text == "true" || text == "1") {
        return 1;
    }
    if (text == "false" || text == "0") {
        return 0;
    }
    throw InputError(place + " '" + text + "' is not a Boolean; write true or false");
}

std::string textOf(const VariableValue& value) {
    if (const auto* real = std::get_if<double>(&value)) {
        return program_support::shortNumber(*real);
    }
    if (const auto* integer = std::get_if<std::int32_t>(&value)) {
        return std::to_string(*integer);
    }
    return std::get<std::string>(value);
}

/// The runtime's setters by type, so that one visit finds the right one.
struct Setter {
    FmiToolsInstance* fmu;
    const char* name;

    std::int32_t operator()(double value) const {
        return fmiToolsSetRealVariableValue(fmu, name, value);
    }

    std::int32_t operator()(std::int32_t value) const {
        return fmiToolsSetIntegerVariableValue(fmu, name, value);
    }

    std::int32_t operator()(const std::string& value) const {
        return fmiToolsSetStringVariableValue(fmu, name, value.c_str());
    }
};

/// How many letters to insert, remove or replace to get from one text to the other.
std::size_t editDistance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

std::string nearestName(const ModelInformation& model, const std::string& name) {
    const std::string* nearest = nullptr;
    std::size_t best = std::max<std::size_t>(name.size() / 2, 1) + 1;
    for (const auto& variable : model.variables) {
        const auto distance = editDistance(name, variable.name);
        if (distance < best) {
            best = distance;
            nearest = &variable.name;
        }
    }
    return nearest != nullptr ? "did you mean '" + *nearest + "'?" : "see fmu_run --info";
}

} // namespace

VariableValue parseValue(const std::string& text, VariableType type, const std::string& place) {
    switch (type) {
    case VariableType::Real:
        return program_support::parseNumber(text, place);
    case VariableType::Integer:
    case VariableType::Enumeration:
        return parseInteger(text, place);
    case VariableType::Boolean:
        return parseBoolean(text, place);
    case VariableType::String:
        break;
    }
    return text;
}

void setVariable(FmiToolsInstance* fmu, const std::string& name, const VariableValue& value) {
    if (std::visit(Setter{fmu, name.c_str()}, value) != 0) {
        throw RunFailure("it refused the value " + textOf(value) + " for the variable '" + name +
                         "'");
    }
}

const Variable& requireVariable(const ModelInformation& model, const std::string& name,
                                const std::string& place) {
    if (const auto* variable = model.find(name)) {
        return *variable;
    }
    throw InputError(place + ": the FMU has no variable '" + name + "'; " +
                     nearestName(model, name));
}

} // namespace fmu_run
