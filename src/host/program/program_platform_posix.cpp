#include "host/program/program_platform.h"

#include <filesystem>

namespace metrify::host {

std::vector<std::string> ProgramArguments(int argc, char** argv) {
    return {argv, argv + argc};
}

std::string ModuleBesideProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).replace_filename("Metrify.so").string();
}

void UseBinaryStreams() {}

bool ServeOtherPrograms(Host& /*host*/) {
    return false;
}

} // namespace metrify::host
