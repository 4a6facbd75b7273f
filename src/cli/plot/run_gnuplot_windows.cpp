#include "cli/plot/gnuplot.h"

#include <cstdio>

namespace metrify {

bool run_gnuplot(const std::string& script) {
    FILE* const commands = _popen("gnuplot >NUL 2>&1", "wb");
    if (commands == nullptr)
        return false;
    const bool is_written = std::fwrite(script.data(), 1, script.size(), commands) == script.size();
    return _pclose(commands) == 0 && is_written;
}

} // namespace metrify
