/** @file
 * The context: from an FMU archive to an unpacked directory and its FMI version.
 */
#ifndef FMI_IMPORT_CONTEXT_H_
#define FMI_IMPORT_CONTEXT_H_

#include "../JM/jm_callbacks.h"
#include "../fmilib_config.h"
#include "fmi_version.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Configuration: report variables that share one name. */
#define FMI_IMPORT_NAME_CHECK 1

typedef struct fmi_xml_context_t fmi_import_context_t;

/** Makes a context; null when memory ran out.
 *
 * @param callbacks  Used in place, must outlive the context and its FMUs; null takes the defaults.
 *                   Free the context with fmi_import_free_context().
 */
FMILIB_EXPORT fmi_import_context_t* fmi_import_allocate_context(jm_callbacks* callbacks);

/** Frees a context. FMUs made with it stay valid. Null is allowed. */
FMILIB_EXPORT void fmi_import_free_context(fmi_import_context_t* c);

/** Chooses what is checked in model descriptions: 0 or FMI_IMPORT_NAME_CHECK. */
FMILIB_EXPORT void fmi_import_set_configuration(fmi_import_context_t* c, int conf);

/** Unpacks an FMU (FMI 2.0 section 2.3) and tells its FMI version.
 *
 * Nothing is written when any entry of the archive could end up outside `dirName` or in a folder
 * `FMITools` at its top, is not a plain file or directory, or when the archive exceeds the limits on entries (100,000) and unpacked size
 * (16 GiB). Damaged data is an error; the damaged file is not left behind.
 *
 * @param c         The context.
 * @param fileName  The FMU. Null: nothing is unpacked, `dirName` holds an unpacked FMU.
 * @param dirName   An existing directory to unpack into; files of the same name are replaced.
 * @return The version; fmi_version_unknown_enu on any failure, which is then in the log.
 */
FMILIB_EXPORT fmi_version_enu_t fmi_import_get_fmi_version(fmi_import_context_t* c,
                                                           const char* fileName,
                                                           const char* dirName);

#ifdef __cplusplus
}
#endif

#endif
