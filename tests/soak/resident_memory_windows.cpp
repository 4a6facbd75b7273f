#include "tests/soak/resident_memory.h"

// clang-format off
#include <windows.h>
#include <psapi.h> // uses the types of windows.h
// clang-format on

namespace metrify_soak {

std::size_t ResidentMemory() {
    PROCESS_MEMORY_COUNTERS counters{};
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.WorkingSetSize;
}

} // namespace metrify_soak
