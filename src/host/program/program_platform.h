#pragma once

// What the system does for a program.

#include <string>
#include <vector>

namespace metrify::host {

class Host;

/// The arguments of this program, in UTF-8.
std::vector<std::string> ProgramArguments(int argc, char** argv);

/// The whole path of the add-in that lies beside this program.
std::string ModuleBesideProgram();

/// Newlines go in and out as they are.
void UseBinaryStreams();

/// Shows the host to other programs by its windows and its automation, until its main window is closed. False
/// where programs have no such things.
bool ServeOtherPrograms(Host& host);

} // namespace metrify::host
