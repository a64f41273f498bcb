#pragma once

#include "fuzz/fuzz_support.h"

#include <fmilib.h>
#include <memory>

namespace fuzz {

struct FreeContext {
    void operator()(fmi_import_context_t* context) const { fmi_import_free_context(context); }
};

using Context = std::unique_ptr<fmi_import_context_t, FreeContext>;

/// A context whose messages are composed but go nowhere.
inline Context silentContext() {
    static jm_callbacks callbacks = [] {
        jm_callbacks result{};
        result.malloc = std::malloc;
        result.calloc = std::calloc;
        result.realloc = std::realloc;
        result.free = std::free;
        result.logger = [](jm_callbacks*, jm_string, jm_log_level_enu_t, jm_string) {};
        result.log_level = jm_log_level_all;
        return result;
    }();
    return Context(fmi_import_allocate_context(&callbacks));
}

} // namespace fuzz
