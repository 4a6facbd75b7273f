#pragma once

// What the system tells a program of itself.

#include <string>
#include <vector>

namespace metrify::host {

/// The arguments of this program, in UTF-8.
std::vector<std::string> ProgramArguments(int argc, char** argv);

/// The whole path of the add-in that lies beside this program.
std::string ModuleBesideProgram();

/// Newlines go in and out as they are.
void UseBinaryStreams();

} // namespace metrify::host
