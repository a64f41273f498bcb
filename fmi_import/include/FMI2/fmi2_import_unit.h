/** @file
 * Units (FMI 2.0 section 2.2.2).
 */
#ifndef FMI2_IMPORT_UNIT_H_
#define FMI2_IMPORT_UNIT_H_

#include "../fmilib_config.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct fmi2_xml_unit_t fmi2_import_unit_t;

/** Name of the unit, valid as long as the FMU; null for null. */
FMILIB_EXPORT const char* fmi2_import_get_unit_name(fmi2_import_unit_t* u);

#ifdef __cplusplus
}
#endif

#endif
