#pragma once

// Macro texts, as the host runs them for other programs: `Name("text","text")` with a call of a module's
// entry, `CALL("module","entry","types")`, among them.

#include "host/state/host_state.h"

#include <optional>
#include <string_view>
#include <vector>

namespace metrify::host {

/// Runs a macro text. Nothing if it is none, or names what isn't there.
std::optional<CellValue> RunMacroText(HostState& state, std::u16string_view text);

/// Runs a registered command or function by its name. Nothing without one of that name.
std::optional<CellValue> RunMacro(HostState& state, std::u16string_view name,
                                  const std::vector<CellValue>& arguments);

} // namespace metrify::host
