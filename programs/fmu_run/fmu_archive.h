#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace fmu_run {

/// What an archive tells without being unpacked.
struct ArchiveContent {
    bool isReadable = false;            ///< It has a directory that can be read to its end.
    std::vector<std::string> platforms; ///< As in FmuDescription.
};

/// Copies the model description in the archive `fmu`, and nothing else of it, into `copy`, a new
/// archive.
///
/// @throws program_support::InputError when there is none or more than one, or it is damaged or
///         larger than 1 GiB.
ArchiveContent copyModelDescription(const std::filesystem::path& fmu,
                                    const std::filesystem::path& copy);

/// True when a file of that name in the folder of a platform can be the FMU's library.
bool isLibraryName(const std::string& name);

} // namespace fmu_run
