/** @file
 * An FMU: its model description and its variables (FMI 2.0 section 2.2).
 */
#ifndef FMI2_IMPORT_H_
#define FMI2_IMPORT_H_

#include "../FMI/fmi_import_context.h"
#include "../fmilib_config.h"
#include "fmi2_enums.h"
#include "fmi2_function_types.h"
#include "fmi2_types.h"
#include "fmi2_xml_callbacks.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct fmi2_import_t fmi2_import_t;

#ifdef __cplusplus
}
#endif

#include "fmi2_import_capi.h"
#include "fmi2_import_unit.h"
#include "fmi2_import_variable.h"
#include "fmi2_import_variable_list.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Reads the model description of an unpacked FMU.
 *
 * @param context        Its callbacks are kept, the context itself is not.
 * @param dirPath        The directory of the unpacked FMU; may be relative to the current directory
 *                       of this moment.
 * @param xml_callbacks  Accepted for the interface's sake: annotations are not read.
 * @return The FMU, to be freed with fmi2_import_free(); null on failure, which is then in the log.
 */
FMILIB_EXPORT fmi2_import_t* fmi2_import_parse_xml(fmi_import_context_t* context,
                                                   const char* dirPath,
                                                   fmi2_xml_callbacks_t* xml_callbacks);

/** Unloads the binary where it is loaded and frees the FMU. Null is allowed. An instance is not
 * freed: fmi2_import_free_instance() comes first. */
FMILIB_EXPORT void fmi2_import_free(fmi2_import_t* fmu);

/** The last message of any level that went through the FMU's callbacks; "" for null. */
FMILIB_EXPORT const char* fmi2_import_get_last_error(fmi2_import_t* fmu);

/** Interfaces described in the model description. */
FMILIB_EXPORT fmi2_fmu_kind_enu_t fmi2_import_get_fmu_kind(fmi2_import_t* fmu);

/** @name Texts of the model description (section 2.2.1)
 * "" where the attribute or the element is absent. */
/** @{ */
FMILIB_EXPORT const char* fmi2_import_get_model_name(fmi2_import_t* fmu);
FMILIB_EXPORT const char* fmi2_import_get_GUID(fmi2_import_t* fmu);
FMILIB_EXPORT const char* fmi2_import_get_model_identifier_ME(fmi2_import_t* fmu);
FMILIB_EXPORT const char* fmi2_import_get_model_identifier_CS(fmi2_import_t* fmu);
FMILIB_EXPORT const char* fmi2_import_get_generation_tool(fmi2_import_t* fmu);
FMILIB_EXPORT const char* fmi2_import_get_description(fmi2_import_t* fmu);
/** @} */

/** Whether the model description gives the FMU a capability (section 4.3.1): 1 or 0; 0 for null and
 * for other numbers. Those whose functions the binary lacks are taken away by
 * fmi2_import_create_dllfmu(). */
FMILIB_EXPORT unsigned fmi2_import_get_capability(fmi2_import_t* fmu,
                                                  fmi2_capabilities_enu_t capability);

/** @name Default experiment (section 2.2.5)
 * Absent values are 0.0 s, 1.0 s, 1e-4 and 1e-2 s, and asking for one is logged as a warning. */
/** @{ */
FMILIB_EXPORT double fmi2_import_get_default_experiment_start(fmi2_import_t* fmu);
FMILIB_EXPORT double fmi2_import_get_default_experiment_stop(fmi2_import_t* fmu);
FMILIB_EXPORT double fmi2_import_get_default_experiment_tolerance(fmi2_import_t* fmu);
FMILIB_EXPORT double fmi2_import_get_default_experiment_step(fmi2_import_t* fmu);
FMILIB_EXPORT int fmi2_import_get_default_experiment_has_start(fmi2_import_t* fmu);
FMILIB_EXPORT int fmi2_import_get_default_experiment_has_stop(fmi2_import_t* fmu);
FMILIB_EXPORT int fmi2_import_get_default_experiment_has_tolerance(fmi2_import_t* fmu);
FMILIB_EXPORT int fmi2_import_get_default_experiment_has_step(fmi2_import_t* fmu);
/** @} */

/** All variables, aliases included.
 *
 * @param sortOrder  0: as in the model description. 1: by name, bytewise. 2: by type (Integer and
 *                   Enumeration together), value reference, causality and variability.
 * @return A list to be freed with fmi2_import_free_variable_list(); null for another order, and for
 *         orders 0 and 2 when the model description has no ModelVariables.
 */
FMILIB_EXPORT fmi2_import_variable_list_t* fmi2_import_get_variable_list(fmi2_import_t* fmu,
                                                                         int sortOrder);

/** The variable of exactly this name; null when there is none. Takes the same time for any number
 * of variables. */
FMILIB_EXPORT fmi2_import_variable_t* fmi2_import_get_variable_by_name(fmi2_import_t* fmu,
                                                                       const char* name);

#ifdef __cplusplus
}
#endif

#endif
