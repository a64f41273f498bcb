/** @file
 * Lists of variables. A list owns its array only: it may be freed after the FMU.
 */
#ifndef FMI2_IMPORT_VARIABLE_LIST_H_
#define FMI2_IMPORT_VARIABLE_LIST_H_

#include "../fmilib_config.h"
#include "fmi2_import_variable.h"

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct fmi2_import_variable_list_t fmi2_import_variable_list_t;

/** Number of variables; 0 for null. */
FMILIB_EXPORT size_t fmi2_import_get_variable_list_size(fmi2_import_variable_list_t* vl);

/** Variable at `index`, counted from 0; null beyond the end or for a null list. */
FMILIB_EXPORT fmi2_import_variable_t* fmi2_import_get_variable(fmi2_import_variable_list_t* vl,
                                                               size_t index);

/** Frees the list; the variables stay. Null is allowed. */
FMILIB_EXPORT void fmi2_import_free_variable_list(fmi2_import_variable_list_t* vl);

#ifdef __cplusplus
}
#endif

#endif
