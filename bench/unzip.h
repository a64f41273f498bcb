#pragma once

#include <filesystem>

namespace bench {

/// Unpacks a trusted archive, with nothing but what that takes: the yardstick for loading.
///
/// @throws std::runtime_error naming the archive when it cannot be unpacked.
void unzip(const std::filesystem::path& archive, const std::filesystem::path& directory);

} // namespace bench
