/** @file
 * Helpers around directories.
 */
#ifndef FMI_IMPORT_UTIL_H_
#define FMI_IMPORT_UTIL_H_

#include "../JM/jm_callbacks.h"
#include "../fmilib_config.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Makes a new directory with a unique name.
 *
 * @param cb             Null takes the default callbacks.
 * @param systemTempDir  Where; null takes the system's directory for temporary files.
 * @param tempPrefix     Beginning of the name; null takes "fmil".
 * @return Its absolute path, to be freed with the callbacks' `free`; null on failure.
 */
FMILIB_EXPORT char* fmi_import_mk_temp_dir(jm_callbacks* cb, const char* systemTempDir,
                                           const char* tempPrefix);

/** Removes a directory with everything in it; symbolic links are removed, not followed.
 *
 * @return jm_status_success, also when there is no such directory; jm_status_error when something
 *         is left.
 */
FMILIB_EXPORT jm_status_enu_t fmi_import_rmdir(jm_callbacks* cb, const char* dir);

/** The "file:" URL of an absolute path, to be freed with the callbacks' `free`; null on failure. */
FMILIB_EXPORT char* fmi_import_create_URL_from_abs_path(jm_callbacks* cb, const char* absPath);

/** Path of the model description below an unpacked FMU, to be freed with the callbacks' `free`. */
FMILIB_EXPORT char* fmi_import_get_model_description_path(const char* fmu_unzipped_path,
                                                          jm_callbacks* callBackFunctions);

#ifdef __cplusplus
}
#endif

#endif
