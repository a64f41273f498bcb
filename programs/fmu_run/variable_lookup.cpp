#include "programs/fmu_run/variable_lookup.h"

#include "programs/support/input_error.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <utility>
#include <vector>

namespace fmu_run {
namespace {

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

std::string nearestName(const FmuDescription& fmu, const std::string& name) {
    const std::string* nearest = nullptr;
    std::size_t best = std::max<std::size_t>(name.size() / 2, 1) + 1;
    for (const auto& variable : fmu.variables) {
        const auto distance = editDistance(name, variable.name);
        if (distance < best) {
            best = distance;
            nearest = &variable.name;
        }
    }
    return nearest != nullptr ? "did you mean '" + *nearest + "'?" : "see fmu_run --info";
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
