#include "fmi_import/model_description/name_index.h"

#include <bit>
#include <functional>

namespace fmi_import {

void NameIndex::reserve(std::size_t count) {
    slots_.assign(std::bit_ceil(2 * count + 1), Slot{});
}

bool NameIndex::insert(std::string_view name, std::uint32_t position) {
    constexpr std::size_t mostProbes = 10'000; // Chance needs some thirty among millions of names.
    const std::uint32_t hash = hashOf(name);
    std::size_t at = hash & mask();
    for (std::size_t probe = 0; slots_[at].position != notFound; ++probe) {
        if (probe == mostProbes) {
            return false;
        }
        at = (at + 1) & mask();
    }
    slots_[at] = {hash, position};
    return true;
}

std::uint32_t NameIndex::hashOf(std::string_view name) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>{}(name));
}

} // namespace fmi_import
