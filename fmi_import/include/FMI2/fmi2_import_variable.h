/** @file
 * Variables of a model description (FMI 2.0 section 2.2.7).
 *
 * Variables belong to the FMU they were asked from and are valid until fmi2_import_free().
 */
#ifndef FMI2_IMPORT_VARIABLE_H_
#define FMI2_IMPORT_VARIABLE_H_

#include "../fmilib_config.h"
#include "fmi2_enums.h"
#include "fmi2_import_unit.h"
#include "fmi2_types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct fmi2_xml_variable_t fmi2_import_variable_t;
typedef struct fmi2_xml_real_variable_t fmi2_import_real_variable_t;
typedef struct fmi2_xml_integer_variable_t fmi2_import_integer_variable_t;
typedef struct fmi2_xml_string_variable_t fmi2_import_string_variable_t;
typedef struct fmi2_xml_enum_variable_t fmi2_import_enum_variable_t;
typedef struct fmi2_xml_bool_variable_t fmi2_import_bool_variable_t;

/** Name as in the model description, entities decoded; null for null. */
FMILIB_EXPORT const char* fmi2_import_get_variable_name(fmi2_import_variable_t* v);

/** Description, "" when there is none; null for null. */
FMILIB_EXPORT const char* fmi2_import_get_variable_description(fmi2_import_variable_t* v);

/** Value reference; the largest number for null. */
FMILIB_EXPORT fmi2_value_reference_t fmi2_import_get_variable_vr(fmi2_import_variable_t* v);

/** Type; Real for null. */
FMILIB_EXPORT fmi2_base_type_enu_t fmi2_import_get_variable_base_type(fmi2_import_variable_t* v);

/** Causality, "local" where none is given. */
FMILIB_EXPORT fmi2_causality_enu_t fmi2_import_get_causality(fmi2_import_variable_t* v);

/** Variability, "continuous" where none is given, "fixed" for parameters. */
FMILIB_EXPORT fmi2_variability_enu_t fmi2_import_get_variability(fmi2_import_variable_t* v);

/** Initial, by default as variability and causality imply; unknown for inputs. */
FMILIB_EXPORT fmi2_initial_enu_t fmi2_import_get_initial(fmi2_import_variable_t* v);

/** 1 when the variable has a start value (one that is required counts as given), otherwise 0. */
FMILIB_EXPORT int fmi2_import_get_variable_has_start(fmi2_import_variable_t* v);

/** Whether another variable of the same type and value reference comes first. */
FMILIB_EXPORT fmi2_variable_alias_kind_enu_t
fmi2_import_get_variable_alias_kind(fmi2_import_variable_t* v);

/** @name The variable as one of its own type
 * The same pointer where the type fits, otherwise null. */
/** @{ */
FMILIB_EXPORT fmi2_import_real_variable_t*
fmi2_import_get_variable_as_real(fmi2_import_variable_t* v);
FMILIB_EXPORT fmi2_import_integer_variable_t*
fmi2_import_get_variable_as_integer(fmi2_import_variable_t* v);
FMILIB_EXPORT fmi2_import_bool_variable_t*
fmi2_import_get_variable_as_boolean(fmi2_import_variable_t* v);
FMILIB_EXPORT fmi2_import_string_variable_t*
fmi2_import_get_variable_as_string(fmi2_import_variable_t* v);
FMILIB_EXPORT fmi2_import_enum_variable_t*
fmi2_import_get_variable_as_enum(fmi2_import_variable_t* v);
/** @} */

/** @name Start values
 * Zero, false or "" where fmi2_import_get_variable_has_start() is 0. */
/** @{ */
FMILIB_EXPORT fmi2_real_t fmi2_import_get_real_variable_start(fmi2_import_real_variable_t* v);
FMILIB_EXPORT int fmi2_import_get_integer_variable_start(fmi2_import_integer_variable_t* v);
FMILIB_EXPORT fmi2_boolean_t fmi2_import_get_boolean_variable_start(fmi2_import_bool_variable_t* v);
FMILIB_EXPORT const char* fmi2_import_get_string_variable_start(fmi2_import_string_variable_t* v);
FMILIB_EXPORT int fmi2_import_get_enum_variable_start(fmi2_import_enum_variable_t* v);
/** @} */

/** The variable's own unit, otherwise that of its declared type; null when neither has one. A
 * display unit never changes it. */
FMILIB_EXPORT fmi2_import_unit_t*
fmi2_import_get_real_variable_unit(fmi2_import_real_variable_t* v);

#ifdef __cplusplus
}
#endif

#endif
