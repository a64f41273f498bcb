#pragma once

#include "programs/fmu_run/fmu_description.h"

#include <cstdint>
#include <string>
#include <unordered_map>

namespace fmu_run {

/// Which Integers and Enumerations have the value references of Booleans.
///
/// A Boolean is set through the Integer function of the FMU. Value references are unique within a
/// type only (FMI 2.0 section 2.2.7): where an Integer has the Boolean's, the Integer is set instead.
class SharedReferences {
  public:
    /// `fmu` must outlive it.
    explicit SharedReferences(const FmuDescription& fmu);

    /// What would be set instead of `variable`; null when it is no Boolean or nothing would.
    [[nodiscard]] const Variable* setInsteadOf(const Variable& variable) const;

    /// Looks at a variable that is about to be set, named by `place` for messages. Warns, on
    /// standard error unless `quiet`, of a Boolean that the FMU may refuse.
    ///
    /// @throws program_support::InputError beginning with `place` when another would be set.
    void requireOwn(const Variable& variable, const std::string& place, bool quiet) const;

  private:
    std::unordered_map<std::uint32_t, const Variable*> integers_; ///< And Enumerations.
};

} // namespace fmu_run
