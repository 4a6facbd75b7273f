#pragma once

// A trace of a macro that works on the active cell.

#include "host/core/host.h"

#include <iosfwd>
#include <string>

namespace metrify::host {

/// Enters a text into the active cell, runs a command and writes a line for each visible effect: the content
/// of the cell before, each alert with the user's answer, each formula that the function wizard opens with,
/// the content of the cell after. A line begins with a keyword and a tab. False if there is no such command.
bool WriteMacroRun(Host& host, const std::u16string& macro, const std::u16string& content, bool agrees,
                   std::ostream& output);

} // namespace metrify::host
