/** @file
 * The binary of an FMU and the calls into it (FMI 2.0 sections 2.1 and 4.2).
 *
 * A call goes straight to the FMU and returns the FMU's status. No call sequence is kept or
 * checked. Without an instance a call is answered with fmi2_status_fatal; without a loaded binary
 * that is also logged ("FMU CAPI is not loaded").
 */
#ifndef FMI2_IMPORT_CAPI_H_
#define FMI2_IMPORT_CAPI_H_

#include "../JM/jm_callbacks.h"
#include "../fmilib_config.h"
#include "fmi2_enums.h"
#include "fmi2_function_types.h"
#include "fmi2_import.h"
#include "fmi2_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Loads the FMU's binary for this platform and binds its Co-Simulation functions.
 *
 * Libraries that the binary needs are also looked for beside it. A binary that is loaded already is
 * kept, with the callbacks of the first call.
 *
 * @param fmuKind            fmi2_fmu_kind_cs; any other kind is an error.
 * @param callBackFunctions  Copied; the FMU gets a pointer to the copy. Null gives the FMU the
 *                           memory functions and the logger of the context's callbacks.
 * @return jm_status_success, or jm_status_error with the reason in the log.
 */
FMILIB_EXPORT jm_status_enu_t
fmi2_import_create_dllfmu(fmi2_import_t* fmu, fmi2_fmu_kind_enu_t fmuKind,
                          const fmi2_callback_functions_t* callBackFunctions);

/** Unloads the binary; an instance is lost, not freed. Does nothing when none is loaded. */
FMILIB_EXPORT void fmi2_import_destroy_dllfmu(fmi2_import_t* fmu);

/** Answer of fmi2GetVersion; null when no binary is loaded. */
FMILIB_EXPORT const char* fmi2_import_get_version(fmi2_import_t* fmu);

/** Answer of fmi2GetTypesPlatform; null when no binary is loaded. */
FMILIB_EXPORT const char* fmi2_import_get_types_platform(fmi2_import_t* fmu);

/** Calls fmi2Instantiate with the GUID of the model description.
 *
 * Logging is on in the FMU when the callbacks' log level is above `nothing` at this moment.
 *
 * @param fmuResourceLocation  Null gives the URI of the `resources` folder.
 * @return jm_status_error when the FMU refused or no binary is loaded.
 */
FMILIB_EXPORT jm_status_enu_t fmi2_import_instantiate(fmi2_import_t* fmu,
                                                      fmi2_string_t instanceName,
                                                      fmi2_type_t fmuType,
                                                      fmi2_string_t fmuResourceLocation,
                                                      fmi2_boolean_t visible);

/** Calls fmi2FreeInstance where there is an instance; a second call does nothing. */
FMILIB_EXPORT void fmi2_import_free_instance(fmi2_import_t* fmu);

/** @name Calls of an instance
 * Arguments pass unchanged. Times are in seconds. */
/** @{ */
FMILIB_EXPORT fmi2_status_t fmi2_import_set_debug_logging(fmi2_import_t* fmu,
                                                          fmi2_boolean_t loggingOn,
                                                          size_t nCategories,
                                                          fmi2_string_t categories[]);
FMILIB_EXPORT fmi2_status_t fmi2_import_setup_experiment(
    fmi2_import_t* fmu, fmi2_boolean_t toleranceDefined, fmi2_real_t tolerance,
    fmi2_real_t startTime, fmi2_boolean_t stopTimeDefined, fmi2_real_t stopTime);
FMILIB_EXPORT fmi2_status_t fmi2_import_enter_initialization_mode(fmi2_import_t* fmu);
FMILIB_EXPORT fmi2_status_t fmi2_import_exit_initialization_mode(fmi2_import_t* fmu);
FMILIB_EXPORT fmi2_status_t fmi2_import_terminate(fmi2_import_t* fmu);
FMILIB_EXPORT fmi2_status_t fmi2_import_reset(fmi2_import_t* fmu);
/** `newStep` is the FMU's noSetFMUStatePriorToCurrentPoint. */
FMILIB_EXPORT fmi2_status_t fmi2_import_do_step(fmi2_import_t* fmu,
                                                fmi2_real_t currentCommunicationPoint,
                                                fmi2_real_t communicationStepSize,
                                                fmi2_boolean_t newStep);
FMILIB_EXPORT fmi2_status_t fmi2_import_set_real(fmi2_import_t* fmu,
                                                 const fmi2_value_reference_t vr[], size_t nvr,
                                                 const fmi2_real_t value[]);
FMILIB_EXPORT fmi2_status_t fmi2_import_set_integer(fmi2_import_t* fmu,
                                                    const fmi2_value_reference_t vr[], size_t nvr,
                                                    const fmi2_integer_t value[]);
FMILIB_EXPORT fmi2_status_t fmi2_import_set_boolean(fmi2_import_t* fmu,
                                                    const fmi2_value_reference_t vr[], size_t nvr,
                                                    const fmi2_boolean_t value[]);
FMILIB_EXPORT fmi2_status_t fmi2_import_set_string(fmi2_import_t* fmu,
                                                   const fmi2_value_reference_t vr[], size_t nvr,
                                                   const fmi2_string_t value[]);
FMILIB_EXPORT fmi2_status_t fmi2_import_get_real(fmi2_import_t* fmu,
                                                 const fmi2_value_reference_t vr[], size_t nvr,
                                                 fmi2_real_t value[]);
FMILIB_EXPORT fmi2_status_t fmi2_import_get_integer(fmi2_import_t* fmu,
                                                    const fmi2_value_reference_t vr[], size_t nvr,
                                                    fmi2_integer_t value[]);
FMILIB_EXPORT fmi2_status_t fmi2_import_get_boolean(fmi2_import_t* fmu,
                                                    const fmi2_value_reference_t vr[], size_t nvr,
                                                    fmi2_boolean_t value[]);
/** The texts belong to the FMU. */
FMILIB_EXPORT fmi2_status_t fmi2_import_get_string(fmi2_import_t* fmu,
                                                   const fmi2_value_reference_t vr[], size_t nvr,
                                                   fmi2_string_t value[]);
/** @} */

/** A logger for fmi2_callback_functions_t that passes an FMU's messages to the callbacks of its
 * fmi2_import_t.
 *
 * The message is expanded as printf does; "#r12#" (also i, b, s) becomes the name of the variable,
 * "##" becomes "#".
 *
 * @param c  The fmi2_import_t, set as componentEnvironment; null logs to the default callbacks.
 */
FMILIB_EXPORT void fmi2_log_forwarding(fmi2_component_t c, fmi2_string_t instanceName,
                                       fmi2_status_t status, fmi2_string_t category,
                                       fmi2_string_t message, ...);

#ifdef __cplusplus
}
#endif

#endif
