#pragma once

// Macro texts such as `Name("text","text")` and `CALL("module","entry","types")`, which calls an entry point
// of a module.

#include "host/state/host_state.h"

#include <optional>
#include <string_view>
#include <vector>

namespace metrify::host {

/// Runs a macro text. Returns nothing if it is malformed or names nothing known.
std::optional<CellValue> RunMacroText(HostState& state, std::u16string_view text);

/// Runs a registered command or function by name. Returns nothing if there is none.
std::optional<CellValue> RunMacro(HostState& state, std::u16string_view name,
                                  const std::vector<CellValue>& arguments);

} // namespace metrify::host
