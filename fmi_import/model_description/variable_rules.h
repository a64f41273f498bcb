#pragma once

#include "FMI2/fmi2_enums.h"

/// What causality, variability and initial may be together (FMI 2.0 section 2.2.7).
namespace fmi_import {

/// True when a variable of this causality may have this variability.
bool isAllowed(fmi2_variability_enu_t variability, fmi2_causality_enu_t causality);

/// The variability of a variable that tells none, or none that its causality allows.
fmi2_variability_enu_t defaultVariability(fmi2_causality_enu_t causality);

/// The initial of a variable that tells none.
fmi2_initial_enu_t defaultInitial(fmi2_variability_enu_t variability,
                                  fmi2_causality_enu_t causality);

/// True when a variable may tell this initial.
bool isAllowed(fmi2_initial_enu_t initial, fmi2_variability_enu_t variability,
               fmi2_causality_enu_t causality);

/// True when a variable must have a start value.
bool needsStart(fmi2_initial_enu_t initial, fmi2_variability_enu_t variability,
                fmi2_causality_enu_t causality);

} // namespace fmi_import
