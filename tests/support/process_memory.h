#pragma once

#include <cstddef>

namespace test_support {

/// The most memory that this process has had at a time, in bytes; 0 when it cannot be told.
std::size_t peakMemory();

} // namespace test_support
