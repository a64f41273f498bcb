/** @file
 * Enumerations of FMI 2.0 and their names as text.
 */
#ifndef FMI2_ENUMS_H_
#define FMI2_ENUMS_H_

#include "../fmilib_config.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Status of a call into an FMU (section 2.1.3). */
typedef enum {
    fmi2_status_ok = 0,
    fmi2_status_warning = 1,
    fmi2_status_discard = 2,
    fmi2_status_error = 3,
    fmi2_status_fatal = 4,
    fmi2_status_pending = 5
} fmi2_status_t;

/** Interfaces that an FMU offers (section 2.2.1); both are the sum of the two. */
typedef enum {
    fmi2_fmu_kind_unknown = 0,
    fmi2_fmu_kind_me = 1,
    fmi2_fmu_kind_cs = 2,
    fmi2_fmu_kind_me_and_cs = 3
} fmi2_fmu_kind_enu_t;

/** Kind of an instance (section 2.1.5). */
typedef enum { fmi2_model_exchange = 0, fmi2_cosimulation = 1 } fmi2_type_t;

/** Type of a variable (section 2.2.7). */
typedef enum {
    fmi2_base_type_real = 0,
    fmi2_base_type_int = 1,
    fmi2_base_type_bool = 2,
    fmi2_base_type_str = 3,
    fmi2_base_type_enum = 4
} fmi2_base_type_enu_t;

/** Causality of a variable (section 2.2.7). */
typedef enum {
    fmi2_causality_enu_parameter = 0,
    fmi2_causality_enu_calculated_parameter = 1,
    fmi2_causality_enu_input = 2,
    fmi2_causality_enu_output = 3,
    fmi2_causality_enu_local = 4,
    fmi2_causality_enu_independent = 5,
    fmi2_causality_enu_unknown = 6
} fmi2_causality_enu_t;

/** Variability of a variable (section 2.2.7). */
typedef enum {
    fmi2_variability_enu_constant = 0,
    fmi2_variability_enu_fixed = 1,
    fmi2_variability_enu_tunable = 2,
    fmi2_variability_enu_discrete = 3,
    fmi2_variability_enu_continuous = 4,
    fmi2_variability_enu_unknown = 5
} fmi2_variability_enu_t;

/** How a variable is initialised (section 2.2.7). */
typedef enum {
    fmi2_initial_enu_exact = 0,
    fmi2_initial_enu_approx = 1,
    fmi2_initial_enu_calculated = 2,
    fmi2_initial_enu_unknown = 3
} fmi2_initial_enu_t;

/** Whether a variable shares its value with one that comes first. */
typedef enum {
    fmi2_variable_is_not_alias = 0,
    fmi2_variable_is_alias = 1
} fmi2_variable_alias_kind_enu_t;

/** How variable names are built (section 2.2.9). */
typedef enum {
    fmi2_naming_enu_flat = 0,
    fmi2_naming_enu_structured = 1,
    fmi2_naming_enu_unknown = 2
} fmi2_variable_naming_convension_enu_t;

/** What can be asked of an asynchronous step (section 4.2.3). */
typedef enum {
    fmi2_do_step_status = 0,
    fmi2_pending_status = 1,
    fmi2_last_successful_time = 2,
    fmi2_terminated = 3
} fmi2_status_kind_t;

/** Capability flags of the Co-Simulation interface (section 4.3.1) that
 * fmi2_import_get_capability() answers. */
typedef enum {
    fmi2_cs_canBeInstantiatedOnlyOncePerProcess = 13,
    fmi2_cs_canGetAndSetFMUstate = 15,
    fmi2_cs_canSerializeFMUstate = 16,
    fmi2_cs_providesDirectionalDerivatives = 17
} fmi2_capabilities_enu_t;

/** @name Names of the enumerators
 * Static texts; a number without a name gives "Undefined", "Unknown" or "Error". */
/** @{ */
FMILIB_EXPORT const char* fmi2_status_to_string(fmi2_status_t status);
FMILIB_EXPORT const char* fmi2_fmu_kind_to_string(fmi2_fmu_kind_enu_t kind);
FMILIB_EXPORT const char* fmi2_base_type_to_string(fmi2_base_type_enu_t type);
FMILIB_EXPORT const char* fmi2_causality_to_string(fmi2_causality_enu_t causality);
FMILIB_EXPORT const char* fmi2_variability_to_string(fmi2_variability_enu_t variability);
FMILIB_EXPORT const char* fmi2_initial_to_string(fmi2_initial_enu_t initial);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
