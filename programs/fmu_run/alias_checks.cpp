#include "programs/fmu_run/alias_checks.h"

#include "fmi_import/model_description/number_text.h"
#include "programs/fmu_run/variable_checks.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace fmu_run {

namespace {

bool canBeSet(const DescribedVariable& variable) {
    return variable.causality == fmi2_causality_enu_parameter ||
           variable.causality == fmi2_causality_enu_input;
}

bool isConstant(const DescribedVariable& variable) {
    return variable.variability == fmi2_variability_enu_constant;
}

std::string_view textOf(const char* text) {
    return text != nullptr ? text : "";
}

bool isSameStart(const DescribedType& one, const DescribedType& other) {
    return one.type == fmi2_base_type_real
               ? fmi_import::realFromText(one.start) == fmi_import::realFromText(other.start)
               : textOf(one.start) == textOf(other.start);
}

/// Goes through the variables of one value reference that one function sets.
class AliasSet {
  public:
    AliasSet(const DescribedModel& model, DescriptionFindings& findings)
        : model_(model),
          findings_(findings) {}

    void add(const DescribedVariable& variable) {
        if (first_ == nullptr) {
            first_ = &variable;
        } else if (const std::string fault = faultOf(variable); !fault.empty()) {
            findings_.add(variable, fault);
        }
        withStart_ =
            withStart_ == nullptr && variable.element->start != nullptr ? &variable : withStart_;
    }

  private:
    /// What a further variable contradicts; empty when it can be another name of the others.
    [[nodiscard]] std::string faultOf(const DescribedVariable& variable) const {
        if (variable.element->type != first_->element->type) {
            return sharedWith(*first_) + ", which is of type " +
                   fmi2_base_type_to_string(first_->element->type);
        }
        if (textOf(unitOf(model_, *variable.element)) != textOf(unitOf(model_, *first_->element))) {
            return sharedWith(*first_) + ", which has another unit";
        }
        if (isConstant(variable) != isConstant(*first_)) {
            return sharedWith(*first_) + ", and only one of the two is constant";
        }
        const bool hasSecondStart = variable.element->start != nullptr && withStart_ != nullptr;
        if (isConstant(variable)) {
            return hasSecondStart && !isSameStart(*variable.element, *withStart_->element)
                       ? sharedWith(*withStart_) + ", a constant of another value"
                       : "";
        }
        return hasSecondStart ? sharedWith(*withStart_) + ", which has a start value, too" : "";
    }

    static std::string sharedWith(const DescribedVariable& other) {
        return "it has the value reference of " + quoted(other.name);
    }

    const DescribedModel& model_;
    DescriptionFindings& findings_;
    const DescribedVariable* first_ = nullptr;
    const DescribedVariable* withStart_ = nullptr;
};

/// FMI's functions for Integers are also those of Enumerations.
int functionsOf(const DescribedVariable& variable) {
    constexpr std::array<int, 5> groups{0, 1, 2, 3, 1};
    return groups[variable.element->type];
}

using Key = std::pair<std::uint32_t, int>;

Key keyOf(const DescribedVariable* variable) {
    return {*variable->valueReference, functionsOf(*variable)};
}

/// The runtime sets a Boolean through the Integer function.
void warnOfBoolean(const DescribedVariable& boolean, const DescribedVariable& integer,
                   DescriptionFindings& findings) {
    findings.warn(boolean.line, "the Boolean " + quoted(boolean.name) +
                                    " has the value reference of " + quoted(integer.name) +
                                    ", which would be set instead");
}

} // namespace

void checkAliases(const DescribedModel& model, DescriptionFindings& findings) {
    std::vector<const DescribedVariable*> sorted;
    for (const auto& variable : model.variables) {
        if (variable.valueReference && variable.element) {
            sorted.push_back(&variable);
        }
    }
    std::ranges::stable_sort(sorted, {}, keyOf);
    const DescribedVariable* integer = nullptr;
    for (auto begin = sorted.begin(); begin != sorted.end();) {
        AliasSet set(model, findings);
        const Key key = keyOf(*begin);
        const bool isInteger = (*begin)->element->type == fmi2_base_type_int ||
                               (*begin)->element->type == fmi2_base_type_enum;
        integer = isInteger ? *begin : integer;
        for (; begin != sorted.end() && keyOf(*begin) == key; ++begin) {
            set.add(**begin);
            if ((*begin)->element->type == fmi2_base_type_bool && canBeSet(**begin) &&
                integer != nullptr && integer->valueReference == (*begin)->valueReference) {
                warnOfBoolean(**begin, *integer, findings);
            }
        }
    }
}

} // namespace fmu_run
