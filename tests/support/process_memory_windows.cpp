#include "support/process_memory.h"

#include <windows.h>
// Needs what windows.h declares.
#include <psapi.h>

namespace test_support {

std::size_t peakMemory() {
    PROCESS_MEMORY_COUNTERS counters{};
    return K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters) != 0
               ? counters.PeakWorkingSetSize
               : 0;
}

} // namespace test_support
