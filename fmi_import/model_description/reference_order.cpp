#include "fmi_import/model_description/reference_order.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace fmi_import {

namespace {

using Variable = fmi2_xml_variable_t;

constexpr std::array<int, 5> typeGroups{0, 1, 2, 3, 1};

auto groupKey(const Variable& variable) {
    return std::pair(typeGroups[variable.baseType], variable.valueReference);
}

auto orderKey(const Variable& variable) {
    return std::tuple(typeGroups[variable.baseType], variable.valueReference, variable.causality,
                      variable.variability, &variable);
}

bool isConstant(const Variable& variable) {
    return variable.variability == fmi2_variability_enu_constant;
}

/// Looks through sets of variables that share a value reference.
class AliasSets {
  public:
    AliasSets(const XmlReport& report, ModelDescription& description)
        : report_(report),
          description_(description) {}

    /// Marks or collects the variables of one base type in `positions`, which share a reference.
    void resolve(std::span<const std::uint32_t> positions, fmi2_base_type_enu_t type) {
        Variable* first = nullptr;
        Variable* withStart = nullptr;
        for (const std::uint32_t position : positions) {
            Variable& variable = description_.variables[position];
            if (variable.type() != type) {
                continue;
            }
            if (first == nullptr) {
                first = &variable;
            } else if (!mark(withStart != nullptr ? *withStart : *first, variable)) {
                remove(positions, type);
                return;
            }
            withStart = withStart == nullptr && variable.hasStart ? &variable : withStart;
        }
    }

    /// Drops what contradicted itself. True when there was any.
    bool finish() {
        if (removed_.empty()) {
            return false;
        }
        std::ranges::sort(removed_);
        std::size_t position = 0;
        std::erase_if(description_.variables, [&](const Variable&) {
            return std::ranges::binary_search(removed_, position++);
        });
        return true;
    }

  private:
    /// Marks `alias` as alias; false when it cannot share a value with `base`.
    bool mark(const Variable& base, Variable& alias) const {
        if (isConstant(base) != isConstant(alias)) {
            report_.error({"Only constants can be aliases with constants (variables: ", base.name,
                           " and ", alias.name, ")"});
            return false;
        }
        if (!isConstant(base) && base.hasStart && alias.hasStart) {
            report_.error({"Only one variable among non constant aliases is allowed to have start ",
                           "attribute (variables: ", base.name, " and ", alias.name, ") ",
                           std::to_string(base.variability), ", ",
                           std::to_string(alias.variability), ", const enum value: 0"});
            return false;
        }
        report_.log().verbose(module::modelDescription,
                              {"Variables ", base.name, " and ", alias.name,
                               " reference the same vr ", std::to_string(alias.valueReference),
                               ". Marking '", alias.name, "' as alias."});
        alias.isAlias = true;
        return true;
    }

    void remove(std::span<const std::uint32_t> positions, fmi2_base_type_enu_t type) {
        for (const std::uint32_t position : positions) {
            const Variable& variable = description_.variables[position];
            if (variable.type() == type) {
                report_.error({"Removing incorrect alias variable '", variable.name, "'"});
                removed_.push_back(position);
            }
        }
    }

    const XmlReport& report_;
    ModelDescription& description_;
    std::vector<std::size_t> removed_;
};

} // namespace

void sortByReference(ModelDescription& description) {
    const auto& variables = description.variables;
    auto& order = description.referenceOrder;
    order.resize(variables.size());
    std::iota(order.begin(), order.end(), 0U);
    const auto key = [&](std::uint32_t position) { return orderKey(variables[position]); };
    if (!std::ranges::is_sorted(order, {}, key)) {
        std::ranges::sort(order, {}, key);
    }
}

void resolveAliases(const XmlReport& report, ModelDescription& description) {
    AliasSets sets(report, description);
    const auto& order = description.referenceOrder;
    const auto key = [&](std::uint32_t at) { return groupKey(description.variables[at]); };
    for (auto begin = order.begin(); begin != order.end();) {
        const auto end = std::find_if(begin, order.end(),
                                      [&](std::uint32_t at) { return key(at) != key(*begin); });
        if (end - begin > 1) {
            for (int type = fmi2_base_type_real; type <= fmi2_base_type_enum; ++type) {
                sets.resolve({begin, end}, static_cast<fmi2_base_type_enu_t>(type));
            }
        }
        begin = end;
    }
    if (sets.finish()) {
        sortByReference(description);
    }
}

const fmi2_xml_variable_t* findByReference(const ModelDescription& description,
                                           fmi2_base_type_enu_t type, std::uint32_t reference) {
    const auto& variables = description.variables;
    const auto wanted = std::pair(typeGroups[static_cast<std::size_t>(type)], reference);
    const auto& order = description.referenceOrder;
    const auto key = [&](std::uint32_t at) { return groupKey(variables[at]); };
    const auto found = std::find_if(
        std::ranges::lower_bound(order, wanted, {}, key), order.end(),
        [&](std::uint32_t at) { return key(at) != wanted || variables[at].type() == type; });
    return found != order.end() && key(*found) == wanted ? &variables[*found] : nullptr;
}

} // namespace fmi_import
