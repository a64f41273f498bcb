#include "programs/fmu_run/structure_checks.h"

#include "programs/fmu_run/variable_checks.h"

#include <string>

namespace fmu_run {

namespace {

/// A list of ModelStructure beside what belongs into it.
class ListChecks {
  public:
    ListChecks(const DescribedModel& model, DescriptionFindings& findings, std::string name,
               const std::vector<DescribedUnknown>& list)
        : model_(model),
          findings_(findings),
          name_(std::move(name)),
          list_(list),
          isListed_(model.variables.size()) {}

    /// `wanted` tells of each variable whether it belongs into the list.
    void check(const std::vector<bool>& wanted, bool isSorted) {
        std::size_t last = 0;
        for (const auto& unknown : list_) {
            const auto position = positionIn(model_, unknown.index);
            if (!position) {
                findings_.add(unknown.line, name_ + ": its index " + quoted(unknown.index) +
                                                " is that of no variable");
                continue;
            }
            if (!wanted[*position]) {
                say(unknown.line, *position, "is listed in " + name_ + " and must not be");
            } else if (isListed_[*position]) {
                say(unknown.line, *position, "is listed in " + name_ + " twice");
            } else if (isSorted && *position < last) {
                say(unknown.line, *position,
                    "is listed in " + name_ + " behind one of a higher index");
            }
            isListed_[*position] = true;
            last = *position;
        }
    }

    void requireAll(const std::vector<bool>& wanted) {
        for (std::size_t position = 0; position < wanted.size(); ++position) {
            if (wanted[position] && !isListed_[position]) {
                say(model_.variables[position].line, position, "is missing in " + name_);
            }
        }
    }

  private:
    void say(std::size_t line, std::size_t position, const std::string& text) {
        findings_.add(line, "variable " + quoted(model_.variables[position].name) + ": it " + text);
    }

    const DescribedModel& model_;
    DescriptionFindings& findings_;
    std::string name_;
    const std::vector<DescribedUnknown>& list_;
    std::vector<bool> isListed_;
};

template <typename Condition>
std::vector<bool> variablesThat(const DescribedModel& model, Condition isMeant) {
    std::vector<bool> result(model.variables.size());
    for (std::size_t position = 0; position < result.size(); ++position) {
        result[position] = isMeant(model.variables[position]);
    }
    return result;
}

bool hasDerivative(const DescribedVariable& variable) {
    return variable.element && variable.element->derivative != nullptr;
}

/// States and their derivatives, as far as the model description tells of them.
std::vector<bool> statesAndDerivatives(const DescribedModel& model) {
    std::vector<bool> result(model.variables.size());
    for (const auto& unknown : model.derivatives) {
        const auto derivative = positionIn(model, unknown.index);
        if (!derivative || !hasDerivative(model.variables[*derivative])) {
            continue;
        }
        result[*derivative] = true;
        const auto state = positionIn(model, model.variables[*derivative].element->derivative);
        if (state) {
            result[*state] = true;
        }
    }
    return result;
}

/// What is unknown during the initialisation.
std::vector<bool> initialUnknowns(const DescribedModel& model) {
    std::vector<bool> result = statesAndDerivatives(model);
    for (std::size_t position = 0; position < result.size(); ++position) {
        const auto& variable = model.variables[position];
        const auto initial = initialOf(variable);
        const bool isUnknown =
            initial == fmi2_initial_enu_approx || initial == fmi2_initial_enu_calculated;
        const bool isOutputOrState =
            variable.causality == fmi2_causality_enu_output || result[position];
        result[position] = variable.causality == fmi2_causality_enu_calculated_parameter ||
                           (isOutputOrState && isUnknown);
    }
    return result;
}

} // namespace

void checkStructure(const DescribedModel& model, DescriptionFindings& findings) {
    const auto outputs = variablesThat(model, [](const DescribedVariable& variable) {
        return variable.causality == fmi2_causality_enu_output;
    });
    ListChecks outputList(model, findings, "ModelStructure/Outputs", model.outputs);
    outputList.check(outputs, false);
    outputList.requireAll(outputs);
    ListChecks(model, findings, "ModelStructure/Derivatives", model.derivatives)
        .check(variablesThat(model, hasDerivative), false);
    const auto unknowns = initialUnknowns(model);
    ListChecks initialList(model, findings, "ModelStructure/InitialUnknowns",
                           model.initialUnknowns);
    initialList.check(unknowns, true);
    initialList.requireAll(unknowns);
}

} // namespace fmu_run
