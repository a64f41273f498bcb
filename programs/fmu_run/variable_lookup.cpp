#include "programs/fmu_run/variable_lookup.h"

#include "programs/support/input_error.h"
#include "programs/support/nearest_text.h"

#include <algorithm>
#include <vector>

namespace fmu_run {
namespace {

std::string nearestName(const FmuDescription& fmu, const std::string& name) {
    std::vector<std::string> names;
    for (const auto& variable : fmu.variables) {
        names.push_back(variable.name);
    }
    const auto nearest = program_support::nearestText(name, names);
    return nearest.empty() ? "see fmu_run --info" : "did you mean '" + nearest + "'?";
}

} // namespace

const Variable& requireVariable(const FmuDescription& fmu, const std::string& name,
                                const std::string& place) {
    const auto found = std::find_if(fmu.variables.begin(), fmu.variables.end(),
                                    [&](const Variable& each) { return each.name == name; });
    if (found == fmu.variables.end()) {
        throw program_support::InputError(place + ": the FMU has no variable '" + name + "'; " +
                                          nearestName(fmu, name));
    }
    return *found;
}

} // namespace fmu_run
