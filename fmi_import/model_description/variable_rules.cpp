#include "fmi_import/model_description/variable_rules.h"

namespace fmi_import {

namespace {

bool isParameter(fmi2_causality_enu_t causality) {
    return causality == fmi2_causality_enu_parameter ||
           causality == fmi2_causality_enu_calculated_parameter;
}

bool isFixedOrTunable(fmi2_variability_enu_t variability) {
    return variability == fmi2_variability_enu_fixed || variability == fmi2_variability_enu_tunable;
}

} // namespace

bool isAllowed(fmi2_variability_enu_t variability, fmi2_causality_enu_t causality) {
    const bool timeVarying = variability == fmi2_variability_enu_discrete ||
                             variability == fmi2_variability_enu_continuous;
    switch (causality) {
    case fmi2_causality_enu_parameter:
    case fmi2_causality_enu_calculated_parameter:
        return isFixedOrTunable(variability);
    case fmi2_causality_enu_input:
        return timeVarying;
    case fmi2_causality_enu_output:
        return timeVarying || variability == fmi2_variability_enu_constant;
    case fmi2_causality_enu_independent:
        return variability == fmi2_variability_enu_continuous;
    default:
        return true;
    }
}

fmi2_variability_enu_t defaultVariability(fmi2_causality_enu_t causality) {
    return isParameter(causality) ? fmi2_variability_enu_fixed : fmi2_variability_enu_continuous;
}

fmi2_initial_enu_t defaultInitial(fmi2_variability_enu_t variability,
                                  fmi2_causality_enu_t causality) {
    switch (causality) {
    case fmi2_causality_enu_parameter:
        return fmi2_initial_enu_exact;
    case fmi2_causality_enu_calculated_parameter:
        return fmi2_initial_enu_calculated;
    case fmi2_causality_enu_output:
    case fmi2_causality_enu_local:
        return variability == fmi2_variability_enu_constant ? fmi2_initial_enu_exact
                                                            : fmi2_initial_enu_calculated;
    default:
        return fmi2_initial_enu_unknown;
    }
}

bool isAllowed(fmi2_initial_enu_t initial, fmi2_variability_enu_t variability,
               fmi2_causality_enu_t causality) {
    const fmi2_initial_enu_t usual = defaultInitial(variability, causality);
    if (usual != fmi2_initial_enu_calculated) {
        return initial == usual;
    }
    const bool setOnce = isFixedOrTunable(variability);
    return initial != fmi2_initial_enu_exact || !setOnce;
}

bool needsStart(fmi2_initial_enu_t initial, fmi2_variability_enu_t variability,
                fmi2_causality_enu_t causality) {
    return causality == fmi2_causality_enu_input || causality == fmi2_causality_enu_parameter ||
           variability == fmi2_variability_enu_constant || initial == fmi2_initial_enu_exact ||
           initial == fmi2_initial_enu_approx;
}

} // namespace fmi_import
