#include "programs/fmu_run/variable_checks.h"

#include "fmi_import/model_description/number_text.h"
#include "fmi_import/model_description/variable_rules.h"

#include <string>

namespace fmu_run {

namespace {

/// The variable's own text or, where it has none, that of its declared type.
const char* inherited(const DescribedModel& model, const DescribedType& element,
                      const char* DescribedType::*text) {
    if (element.*text != nullptr || element.declaredType == nullptr) {
        return element.*text;
    }
    const auto found = model.types.find(element.declaredType);
    return found != model.types.end() ? found->second.*text : nullptr;
}

/// Checks one variable or declared type; findings begin with `subject`.
class ElementChecks {
  public:
    ElementChecks(const DescribedModel& model, DescriptionFindings& findings, std::string subject,
                  const DescribedType& element)
        : model_(model),
          findings_(findings),
          subject_(std::move(subject)),
          element_(element) {}

    void checkUnits() const {
        const char* unit = unitOf(model_, element_);
        const auto known = model_.units.find(unit != nullptr ? unit : "");
        const bool hasUnit = unit != nullptr && *unit != '\0';
        if (hasUnit && known == model_.units.end()) {
            // That of a declared type is its own finding.
            if (element_.unit != nullptr) {
                say("its unit " + quoted(unit) + " is not defined in UnitDefinitions");
            }
        } else if (element_.displayUnit != nullptr && *element_.displayUnit != '\0' &&
                   (!hasUnit || !known->second.contains(element_.displayUnit))) {
            say("its displayUnit " + quoted(element_.displayUnit) +
                " is not defined in UnitDefinitions for its unit");
        }
    }

    void checkDeclaredType() const {
        if (element_.declaredType == nullptr) {
            return;
        }
        const auto found = model_.types.find(element_.declaredType);
        if (found == model_.types.end()) {
            say("its declaredType " + quoted(element_.declaredType) +
                " is not defined in TypeDefinitions");
        } else if (found->second.type != element_.type) {
            say("its declaredType " + quoted(element_.declaredType) + " is of type " +
                fmi2_base_type_to_string(found->second.type));
        }
    }

    void checkBounds() const {
        const char* minimum = inherited(model_, element_, &DescribedType::minimum);
        const char* maximum = inherited(model_, element_, &DescribedType::maximum);
        requireOrder("min", minimum, "max", maximum);
        requireOrder("min", minimum, "start", element_.start);
        requireOrder("start", element_.start, "max", maximum);
    }

    void checkDerivative() const {
        if (element_.derivative == nullptr) {
            return;
        }
        const auto position = positionIn(model_, element_.derivative);
        if (!position) {
            say("its derivative " + quoted(element_.derivative) + " is the index of no variable");
            return;
        }
        const DescribedVariable& state = model_.variables[*position];
        if (!state.element || state.element->type != fmi2_base_type_real ||
            state.variability != fmi2_variability_enu_continuous) {
            say("its derivative refers to " + quoted(state.name) + ", which is no continuous Real");
        }
    }

  private:
    void say(const std::string& text) const {
        findings_.add(element_.line, subject_ + ": " + text);
    }

    [[nodiscard]] std::optional<double> number(const char* text) const {
        if (text == nullptr) {
            return std::nullopt;
        }
        switch (element_.type) {
        case fmi2_base_type_real:
            return fmi_import::realFromText(text);
        case fmi2_base_type_int:
        case fmi2_base_type_enum:
            return fmi_import::integerFromText(text);
        default:
            return std::nullopt;
        }
    }

    void requireOrder(const std::string& lowName, const char* low, const std::string& highName,
                      const char* high) const {
        const auto lowest = number(low);
        const auto highest = number(high);
        if (lowest && highest && *lowest > *highest) {
            say("its " + lowName + " " + quoted(low) + " is above its " + highName + " " +
                quoted(high));
        }
    }

    const DescribedModel& model_;
    DescriptionFindings& findings_;
    std::string subject_;
    const DescribedType& element_;
};

/// The first rule that causality, variability and initial break together; empty when they are in
/// order.
std::string faultOfKind(const DescribedVariable& variable) {
    const auto& [line, name, reference, causality, variability, initial, element] = variable;
    if (causality == fmi2_causality_enu_unknown || variability == fmi2_variability_enu_unknown ||
        initial == fmi2_initial_enu_unknown) {
        return "its causality, variability or initial is none that FMI 2.0 has";
    }
    const std::string kind = std::string("causality ") + fmi2_causality_to_string(causality) +
                             " and variability " + fmi2_variability_to_string(variability);
    if (!fmi_import::isAllowed(variability, causality)) {
        return kind + " do not go together";
    }
    if (initial && !fmi_import::isAllowed(*initial, variability, causality)) {
        return std::string("initial ") + fmi2_initial_to_string(*initial) + " does not go with " +
               kind;
    }
    if (element && element->type != fmi2_base_type_real &&
        variability == fmi2_variability_enu_continuous) {
        return "variability continuous, also where none is told, is for Reals only";
    }
    return {};
}

/// Whether the start value must or must not be there.
void checkStart(const DescribedVariable& variable, DescriptionFindings& findings) {
    const fmi2_initial_enu_t initial = initialOf(variable);
    const bool hasStart = variable.element && variable.element->start != nullptr;
    if (!hasStart && fmi_import::needsStart(initial, variable.variability, variable.causality)) {
        findings.add(variable, "it needs a start value, by its causality, variability and initial");
    }
    if (hasStart && (initial == fmi2_initial_enu_calculated ||
                     variable.causality == fmi2_causality_enu_independent)) {
        findings.add(variable,
                     "it must not have a start value, by its causality, variability and initial");
    }
}

void checkVariable(const DescribedModel& model, const DescribedVariable& variable,
                   DescriptionFindings& findings) {
    if (const std::string fault = faultOfKind(variable); !fault.empty()) {
        findings.add(variable, fault);
    } else {
        checkStart(variable, findings);
    }
    if (variable.element) {
        const ElementChecks checks(model, findings, "variable " + quoted(variable.name),
                                   *variable.element);
        checks.checkUnits();
        checks.checkDeclaredType();
        checks.checkBounds();
        checks.checkDerivative();
    } else {
        findings.add(variable, "it has no type");
    }
}

void checkNames(const DescribedModel& model, DescriptionFindings& findings) {
    std::map<std::string_view, std::size_t> lines;
    for (const auto& variable : model.variables) {
        const auto [known, isNew] = lines.try_emplace(variable.name, variable.line);
        if (!isNew) {
            findings.add(variable, "the variable of line " + std::to_string(known->second) +
                                       " has the same name, only one can be set and read");
        }
    }
}

} // namespace

fmi2_initial_enu_t initialOf(const DescribedVariable& variable) {
    return variable.givenInitial.value_or(
        fmi_import::defaultInitial(variable.variability, variable.causality));
}

const char* unitOf(const DescribedModel& model, const DescribedType& element) {
    return inherited(model, element, &DescribedType::unit);
}

std::optional<std::size_t> positionIn(const DescribedModel& model, const char* index) {
    const auto number = fmi_import::unsignedFromText(index);
    return number && *number >= 1 && *number <= model.variables.size()
               ? std::optional<std::size_t>(*number - 1)
               : std::nullopt;
}

void checkVariables(const DescribedModel& model, DescriptionFindings& findings) {
    for (const auto& [name, type] : model.types) {
        const ElementChecks checks(model, findings, "type " + quoted(name), type);
        checks.checkUnits();
        checks.checkBounds();
    }
    for (const auto& variable : model.variables) {
        checkVariable(model, variable, findings);
    }
    checkNames(model, findings);
}

} // namespace fmu_run
