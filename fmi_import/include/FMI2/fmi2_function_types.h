/** @file
 * The callbacks that an FMU gets, and the types of its functions (FMI 2.0 sections 2.1 and 4.2).
 */
#ifndef FMI2_FUNCTION_TYPES_H_
#define FMI2_FUNCTION_TYPES_H_

#include "fmi2_enums.h"
#include "fmi2_types.h"

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef void (*fmi2_callback_logger_ft)(fmi2_component_environment_t c, fmi2_string_t instanceName,
                                        fmi2_status_t status, fmi2_string_t category,
                                        fmi2_string_t message, ...);
typedef void* (*fmi2_callback_allocate_memory_ft)(size_t nobj, size_t size);
typedef void (*fmi2_callback_free_memory_ft)(void* obj);
typedef void (*fmi2_step_finished_ft)(fmi2_component_environment_t c, fmi2_status_t status);

/** The callback functions of section 2.1.5. */
typedef struct {
    fmi2_callback_logger_ft logger;
    fmi2_callback_allocate_memory_ft allocateMemory;
    fmi2_callback_free_memory_ft freeMemory;
    fmi2_step_finished_ft stepFinished;
    fmi2_component_environment_t componentEnvironment;
} fmi2_callback_functions_t;

typedef const char* (*fmi2_get_types_platform_ft)(void);
typedef const char* (*fmi2_get_version_ft)(void);
typedef fmi2_component_t (*fmi2_instantiate_ft)(fmi2_string_t instanceName, fmi2_type_t fmuType,
                                                fmi2_string_t fmuGUID,
                                                fmi2_string_t fmuResourceLocation,
                                                const fmi2_callback_functions_t* functions,
                                                fmi2_boolean_t visible, fmi2_boolean_t loggingOn);
typedef void (*fmi2_free_instance_ft)(fmi2_component_t c);
typedef fmi2_status_t (*fmi2_set_debug_logging_ft)(fmi2_component_t c, fmi2_boolean_t loggingOn,
                                                   size_t nCategories, fmi2_string_t categories[]);
typedef fmi2_status_t (*fmi2_setup_experiment_ft)(fmi2_component_t c,
                                                  fmi2_boolean_t toleranceDefined,
                                                  fmi2_real_t tolerance, fmi2_real_t startTime,
                                                  fmi2_boolean_t stopTimeDefined,
                                                  fmi2_real_t stopTime);
typedef fmi2_status_t (*fmi2_enter_initialization_mode_ft)(fmi2_component_t c);
typedef fmi2_status_t (*fmi2_exit_initialization_mode_ft)(fmi2_component_t c);
typedef fmi2_status_t (*fmi2_terminate_ft)(fmi2_component_t c);
typedef fmi2_status_t (*fmi2_reset_ft)(fmi2_component_t c);
typedef fmi2_status_t (*fmi2_get_real_ft)(fmi2_component_t c, const fmi2_value_reference_t vr[],
                                          size_t nvr, fmi2_real_t value[]);
typedef fmi2_status_t (*fmi2_get_integer_ft)(fmi2_component_t c, const fmi2_value_reference_t vr[],
                                             size_t nvr, fmi2_integer_t value[]);
typedef fmi2_status_t (*fmi2_get_boolean_ft)(fmi2_component_t c, const fmi2_value_reference_t vr[],
                                             size_t nvr, fmi2_boolean_t value[]);
typedef fmi2_status_t (*fmi2_get_string_ft)(fmi2_component_t c, const fmi2_value_reference_t vr[],
                                            size_t nvr, fmi2_string_t value[]);
typedef fmi2_status_t (*fmi2_set_real_ft)(fmi2_component_t c, const fmi2_value_reference_t vr[],
                                          size_t nvr, const fmi2_real_t value[]);
typedef fmi2_status_t (*fmi2_set_integer_ft)(fmi2_component_t c, const fmi2_value_reference_t vr[],
                                             size_t nvr, const fmi2_integer_t value[]);
typedef fmi2_status_t (*fmi2_set_boolean_ft)(fmi2_component_t c, const fmi2_value_reference_t vr[],
                                             size_t nvr, const fmi2_boolean_t value[]);
typedef fmi2_status_t (*fmi2_set_string_ft)(fmi2_component_t c, const fmi2_value_reference_t vr[],
                                            size_t nvr, const fmi2_string_t value[]);
typedef fmi2_status_t (*fmi2_do_step_ft)(fmi2_component_t c, fmi2_real_t currentCommunicationPoint,
                                         fmi2_real_t communicationStepSize,
                                         fmi2_boolean_t noSetFMUStatePriorToCurrentPoint);

#ifdef __cplusplus
}
#endif

#endif
