#include "fmi_import/name_index.h"

#include <bit>
#include <functional>

namespace fmi_import {

void NameIndex::reserve(std::size_t count) {
    slots_.assign(std::bit_ceil(2 * count + 1), Slot{});
}

void NameIndex::insert(std::string_view name, std::uint32_t position) {
    const std::uint32_t hash = hashOf(name);
    std::size_t at = hash & mask();
    while (slots_[at].position != notFound) {
        at = (at + 1) & mask();
    }
    slots_[at] = {hash, position};
}

std::uint32_t NameIndex::hashOf(std::string_view name) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>{}(name));
}

} // namespace fmi_import
