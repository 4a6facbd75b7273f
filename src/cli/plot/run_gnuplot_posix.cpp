#include "cli/plot/gnuplot.h"

#include <csignal>
#include <cstdio>

namespace metrify {

bool run_gnuplot(const std::string& script) {
    (void)std::signal(SIGPIPE, SIG_IGN); // if there is no gnuplot, nothing reads the commands
    FILE* const commands = popen("gnuplot >/dev/null 2>&1", "w");
    if (commands == nullptr)
        return false;
    const bool is_written = std::fwrite(script.data(), 1, script.size(), commands) == script.size();
    return pclose(commands) == 0 && is_written;
}

} // namespace metrify
