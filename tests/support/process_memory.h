#pragma once

#include <cstddef>

namespace platform {

/// The most memory that this process has had at a time, in bytes; 0 when it cannot be told.
std::size_t peakMemory();

} // namespace platform
