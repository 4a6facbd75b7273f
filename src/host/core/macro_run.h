#pragma once

// A macro at work on the active cell, for whoever wants to read what it does.

#include "host/core/host.h"

#include <iosfwd>
#include <string>

namespace metrify::host {

/// Puts a text into the active cell, runs a command and writes what can be seen of it, a line each: the
/// content of the cell before, each alert with the user's answer, each formula that the function wizard
/// opens on, the content of the cell afterwards. A word stands first in the line, then a tab. False if there
/// is no such command.
bool WriteMacroRun(Host& host, const std::u16string& macro, const std::u16string& content, bool agrees,
                   std::ostream& output);

} // namespace metrify::host
