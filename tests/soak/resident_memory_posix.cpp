#include "tests/soak/resident_memory.h"

#include <fstream>
#include <unistd.h>

namespace metrify_soak {

std::size_t ResidentMemory() {
    std::size_t total = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

} // namespace metrify_soak
