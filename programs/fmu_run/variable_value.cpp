#include "programs/fmu_run/variable_value.h"

#include "programs/fmu_run/run_failure.h"
#include "programs/support/call_watch.h"
#include "programs/support/input_error.h"
#include "programs/support/number_text.h"

#include <array>
#include <charconv>
#include <system_error>

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

} // namespace

VariableValue parseValue(const std::string& text, fmi2_base_type_enu_t type,
                         const std::string& place) {
    switch (type) {
    case fmi2_base_type_real:
        return program_support::parseNumber(text, place);
    case fmi2_base_type_int:
    case fmi2_base_type_enum:
        return parseInteger(text, place);
    case fmi2_base_type_bool:
        return parseBoolean(text, place);
    case fmi2_base_type_str:
        break;
    }
    return text;
}

std::string textOf(const VariableValue& value) {
    if (const auto* real = std::get_if<double>(&value)) {
        return program_support::plainNumber(*real);
    }
    if (const auto* integer = std::get_if<std::int32_t>(&value)) {
        return std::to_string(*integer);
    }
    return std::get<std::string>(value);
}

void setVariable(FmiToolsInstance* fmu, const std::string& name, const VariableValue& value,
                 double time) {
    constexpr std::array functions{"fmi2SetReal", "fmi2SetInteger", "fmi2SetString"};
    const program_support::ForeignCall call(functions.at(value.index()), time);
    if (std::visit(Setter{fmu, name.c_str()}, value) != 0) {
        throw RunFailure("it refused the value " + textOf(value) + " for the variable '" + name +
                         "'");
    }
}

} // namespace fmu_run
