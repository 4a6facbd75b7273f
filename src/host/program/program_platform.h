#pragma once

// Services of the operating system for the program.

#include <string>
#include <vector>

namespace metrify::host {

class Host;

/// The arguments of this program, in UTF-8.
std::vector<std::string> ProgramArguments(int argc, char** argv);

/// The full path of the add-in in the folder of this program.
std::string ModuleBesideProgram();

/// Turns the conversion of newlines in the standard streams off.
void UseBinaryStreams();

/// Makes the host available to other programs by its windows and its automation until its main window is
/// closed. False on systems without these.
bool ServeOtherPrograms(Host& host);

} // namespace metrify::host
