#pragma once

#include "FMI/fmi_import_context.h"

/// What an application configures before it opens FMUs.
struct fmi_xml_context_t {
    jm_callbacks* callbacks; ///< Never null.
    int configuration = 0;
};
