#pragma once

#include "FMI2/fmi2_enums.h"
#include "fmi_import/model_description/xml_reader.h"

#include <optional>

namespace fmi_import {

/// The enumerator below `end` that `toText` names `text`; `end` when there is none.
template <typename Enumeration>
Enumeration fromText(const char* text, const char* (*toText)(Enumeration), Enumeration end) {
    for (int value = 0; value < end; ++value) {
        if (isSame(text, toText(static_cast<Enumeration>(value)))) {
            return static_cast<Enumeration>(value);
        }
    }
    return end;
}

/// The base type whose element is called `name`.
inline std::optional<fmi2_base_type_enu_t> baseTypeFromElement(const char* name) {
    for (int type = fmi2_base_type_real; type <= fmi2_base_type_enum; ++type) {
        if (isSame(name, fmi2_base_type_to_string(static_cast<fmi2_base_type_enu_t>(type)))) {
            return static_cast<fmi2_base_type_enu_t>(type);
        }
    }
    return std::nullopt;
}

} // namespace fmi_import
