#include "programs/cosim_host/vehicle_parameters.h"

#include "programs/support/input_error.h"
#include "programs/support/input_files.h"
#include "programs/support/number_text.h"
#include "programs/support/trimmed.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <set>

namespace cosim_host {

using program_support::InputError;
using program_support::trimmed;

namespace {

/// A unit is worth `factor` / `divisor` of one without a prefix; two numbers, so that 320 mm are
/// exactly 0.32 m.
struct Unit {
    std::string_view name;
    std::string_view base;
    double factor = 1.0;
    double divisor = 1.0;
};

constexpr std::array<Unit, 15> units = {{{"kg", "kg"},
                                         {"g", "kg", 1.0, 1000.0},
                                         {"t", "kg", 1000.0},
                                         {"m", "m"},
                                         {"cm", "m", 1.0, 100.0},
                                         {"mm", "m", 1.0, 1000.0},
                                         {"N/m", "N/m"},
                                         {"N/mm", "N/m", 1000.0},
                                         {"kN/m", "N/m", 1000.0},
                                         {"N.s/m", "N.s/m"},
                                         {"N.s/mm", "N.s/m", 1000.0},
                                         {"kN.s/m", "N.s/m", 1000.0},
                                         {"kg.m2", "kg.m2"},
                                         {"kg.m^2", "kg.m2"},
                                         {"t.m2", "kg.m2", 1000.0}}};

/// Takes what stands before the first of `separators` off the front of `text`; nothing when there
/// is none.
std::optional<std::string_view> takeBefore(std::string_view& text, std::string_view separators) {
    const std::size_t end = text.find_first_of(separators);
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view part = trimmed(text.substr(0, end));
    text = trimmed(text.substr(end + 1));
    return part;
}

/// "a, b or c" of what `nameOf` says of each element; nothing for those it says "" of.
template <typename Elements, typename NameOf>
std::string choice(const Elements& elements, NameOf nameOf) {
    std::vector<std::string_view> names;
    for (const auto& element : elements) {
        if (const std::string_view name = nameOf(element); !name.empty()) {
            names.push_back(name);
        }
    }
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += i == 0 ? "" : i + 1 == names.size() ? " or " : ", ";
        text += names[i];
    }
    return text;
}

std::string quoted(std::string_view text) {
    return "'" + std::string(text) + "'";
}

/// Reads the lines of one file.
class VehicleReader {
  public:
    VehicleReader(const std::string& path, const std::vector<VehicleParameter>& parameters)
        : path_(path),
          parameters_(parameters) {}

    void read(std::string_view line) {
        ++lineNumber_;
        line = trimmed(line.substr(0, line.find('#')), " \t\r");
        if (line.empty()) {
            return;
        }
        const auto name = takeBefore(line, "=");
        if (!name) {
            fail(quoted(line) +
                 " is no line 'name = value unit'; write it like 'bodyMass = 400 kg'");
        }
        const VehicleParameter& parameter = parameterOf(*name);
        const auto number = takeBefore(line, " \t");
        *parameter.value = inBase(number.value_or(line), number ? line : "", parameter);
    }

  private:
    const VehicleParameter& parameterOf(std::string_view name) {
        const auto found = std::find_if(parameters_.begin(), parameters_.end(),
                                        [&](const auto& known) { return known.name == name; });
        if (found == parameters_.end()) {
            fail(quoted(name) + " is no value of this vehicle; give " +
                 choice(parameters_, [](const auto& known) { return known.name; }));
        }
        if (!given_.insert(found->name).second) {
            fail(quoted(name) + " was given before; give it once");
        }
        return *found;
    }

    double inBase(std::string_view text, std::string_view unitName,
                  const VehicleParameter& parameter) const {
        const auto number = program_support::numberIn(text);
        const auto unit = std::find_if(units.begin(), units.end(),
                                       [&](const Unit& known) { return known.name == unitName; });
        const std::string name(parameter.name);
        if (!number) {
            fail(name + " is " + quoted(text) + "; give a number like 0.5 or 1e-3, and its unit");
        }
        if (unit == units.end() || unit->base != parameter.unit) {
            fail(name + " is in " + quoted(unitName) + "; give it in " +
                 choice(units, [&](const Unit& known) {
                     return known.base == parameter.unit ? known.name : std::string_view();
                 }));
        }
        const double value = *number * unit->factor / unit->divisor;
        if (!(value > 0.0 || (parameter.mayBeZero && value == 0.0))) {
            fail(name + " is " + std::string(text) + "; give " +
                 (parameter.mayBeZero ? "0 or a number above" : "a number above 0"));
        }
        return value;
    }

    [[noreturn]] void fail(const std::string& problem) const {
        throw InputError("in '" + path_ + "', line " + std::to_string(lineNumber_) + ": " +
                         problem);
    }

    const std::string& path_;
    const std::vector<VehicleParameter>& parameters_;
    int lineNumber_ = 0;
    std::set<std::string_view> given_;
};

} // namespace

std::vector<VehicleParameter> parametersOf(QuarterCarParameters& parameters) {
    return {{"bodyMass", "kg", &parameters.bodyMass},
            {"wheelMass", "kg", &parameters.wheelMass},
            {"springStiffness", "N/m", &parameters.springStiffness},
            {"damping", "N.s/m", &parameters.damping, true},
            {"tyreRadius", "m", &parameters.tyreRadius},
            {"tyreStiffness", "N/m", &parameters.tyreStiffness},
            {"tyreDamping", "N.s/m", &parameters.tyreDamping, true}};
}

std::vector<VehicleParameter> parametersOf(CarParameters& parameters) {
    AxleParameters& front = parameters.front;
    AxleParameters& rear = parameters.rear;
    return {{"bodyMass", "kg", &parameters.bodyMass},
            {"rollInertia", "kg.m2", &parameters.rollInertia},
            {"pitchInertia", "kg.m2", &parameters.pitchInertia},
            {"front.distance", "m", &front.distance},
            {"front.track", "m", &front.track},
            {"front.wheelMass", "kg", &front.wheelMass},
            {"front.springStiffness", "N/m", &front.springStiffness},
            {"front.damping", "N.s/m", &front.damping, true},
            {"rear.distance", "m", &rear.distance},
            {"rear.track", "m", &rear.track},
            {"rear.wheelMass", "kg", &rear.wheelMass},
            {"rear.springStiffness", "N/m", &rear.springStiffness},
            {"rear.damping", "N.s/m", &rear.damping, true},
            {"tyreRadius", "m", &parameters.tyreRadius},
            {"tyreStiffness", "N/m", &parameters.tyreStiffness},
            {"tyreDamping", "N.s/m", &parameters.tyreDamping, true}};
}

void readVehicle(const std::string& path, const std::vector<VehicleParameter>& parameters) {
    const std::string content = program_support::textFileContent(path);
    VehicleReader reader(path, parameters);
    std::string_view rest = content;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        reader.read(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
}

} // namespace cosim_host
