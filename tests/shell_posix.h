#pragma once

// Runs commands as a person would type them.

#include <array>
#include <cstdio>
#include <string>
#include <sys/wait.h>

namespace metrify::test {

struct shell_result {
    int status = -1;         ///< -1 if the command was ended by a signal or could not be started
    std::string output = {}; ///< of the standard output, to which the command may redirect others
};

inline shell_result run_shell(const std::string& command) {
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return {};
    shell_result result;
    std::array<char, 4096> buffer;
    while (const std::size_t count = fread(buffer.data(), 1, buffer.size(), pipe))
        result.output.append(buffer.data(), count);
    const int status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

} // namespace metrify::test
