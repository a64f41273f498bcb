#include "support/process_memory.h"

#include <sys/resource.h>

namespace test_support {

std::size_t peakMemory() {
    constexpr std::size_t unit = 1024;
    rusage usage{};
    return getrusage(RUSAGE_SELF, &usage) == 0 ? static_cast<std::size_t>(usage.ru_maxrss) * unit
                                               : 0;
}

} // namespace test_support
