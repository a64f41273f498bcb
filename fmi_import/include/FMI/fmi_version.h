/** @file
 * Versions of the FMI standard.
 */
#ifndef FMI_VERSION_H_
#define FMI_VERSION_H_

#include "../fmilib_config.h"

#ifdef __cplusplus
extern "C" {
#endif

/** The version that an FMU follows. */
typedef enum {
    fmi_version_unknown_enu = 0,
    fmi_version_1_enu = 1,
    fmi_version_2_0_enu = 2,
    fmi_version_3_0_enu = 3,
    fmi_version_unsupported_enu = 4
} fmi_version_enu_t;

/** "1.0", "2.0", "3.0", or "unknown". Static text. */
FMILIB_EXPORT const char* fmi_version_to_string(fmi_version_enu_t v);

#ifdef __cplusplus
}
#endif

#endif
