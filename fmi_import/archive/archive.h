#pragma once

#include "fmi_import/log.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace fmi_import {

/// Most entries that an archive may have.
inline constexpr std::size_t mostArchiveEntries = 100'000;

/// Most bytes that an archive may unpack to: far above any tyre or road data set, far below what a
/// crafted archive can claim.
inline constexpr std::uint64_t largestUnpackedSize = std::uint64_t{16} << 30U;

/// Unpacks the FMU archive `fileName` into the existing directory `directory` (FMI 2.0
/// section 2.3).
///
/// All entries are checked before the first byte is written. Files that are there already are
/// replaced by new ones, unless their content is the same. False on failure, with an entry at fault named in the log.
bool unpackArchive(const Log& log, const std::string& fileName, const std::string& directory);

} // namespace fmi_import
