/** @file
 * Everything an application needs to run an FMU: contexts, model descriptions, binaries, calls.
 *
 * Conventions of the whole interface:
 * - Handles are opaque pointers. A null handle is answered with an error value (null, 0, -1 or
 *   fmi2_status_fatal), never with a crash.
 * - Texts are zero-terminated. A returned `const char*` belongs to the handle it was asked from.
 * - No function changes the process's current directory or locale, starts another program or ends
 *   the process.
 * - Handles are independent of each other; one handle is for one thread at a time.
 *
 * Everything is here that an application of FMI Library needs for a Co-Simulation FMU, whether the
 * FMU runtime calls it or not: programs made for one library run with the other.
 */
#ifndef FMILIB_H_
#define FMILIB_H_

#include "FMI/fmi_import_context.h"
#include "FMI/fmi_import_util.h"
#include "FMI2/fmi2_import.h"
#include "fmilib_config.h"

#endif
