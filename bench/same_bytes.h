#pragma once

#include "bench/workload.h"

namespace bench {

/// Runs some steps of the runtime and of the limit and compares what they write, apart from the
/// time stamps: times of loops that do different work would say nothing.
///
/// @throws std::runtime_error naming the file that differs.
void requireSameBytes(const Workload& workload, const std::filesystem::path& directory);

} // namespace bench
