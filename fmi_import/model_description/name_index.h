#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace fmi_import {

/// Finds the position of a name among many: a hash table of 8 bytes a slot that holds no names
/// itself.
class NameIndex {
  public:
    static constexpr std::uint32_t notFound = 0xFFFFFFFFU;

    /// Makes room for `count` names.
    void reserve(std::size_t count);

    /// The position stored for a name that hashes as `name` and for which `isAt(position)` holds,
    /// or notFound.
    template <typename IsAt>
    [[nodiscard]] std::uint32_t find(std::string_view name, IsAt&& isAt) const {
        if (slots_.empty()) {
            return notFound;
        }
        const std::uint32_t hash = hashOf(name);
        for (std::size_t at = hash & mask(); slots_[at].position != notFound;
             at = (at + 1) & mask()) {
            if (slots_[at].hash == hash && isAt(slots_[at].position)) {
                return slots_[at].position;
            }
        }
        return notFound;
    }

    /// Stores `position` for `name`, which is not there yet; reserve() has made room for it. False
    /// when so many names hash alike that look-ups would become slow: names that were made up for
    /// that.
    [[nodiscard]] bool insert(std::string_view name, std::uint32_t position);

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t position = notFound;
    };

    static std::uint32_t hashOf(std::string_view name);

    [[nodiscard]] std::size_t mask() const { return slots_.size() - 1; }

    std::vector<Slot> slots_;
};

} // namespace fmi_import
