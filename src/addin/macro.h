#pragma once

// The macro behind the add-in's menu: it opens the host's function wizard on the active cell.

#include "xllrt/platform/export.h"
#include "xllrt/value/xl_oper.h"

#include <string>

namespace metrify {

/// Puts a call of the function into the active cell, unless the cell holds one, and opens the wizard on it.
/// What else stands in the cell is replaced only if the user agrees. False if it ended early: there is no
/// active cell, or the user doesn't agree.
bool start_function_wizard(const std::string& name);

/// The same for a cell.
bool start_function_wizard_on(const CXlOper& cell, const std::string& name);

extern "C" {

METRIFY_EXPORT XLOPER12* METRIFY_HOST_CALL Metrify_Macro_12();
METRIFY_EXPORT XLOPER* METRIFY_HOST_CALL Metrify_Macro_4();
}

} // namespace metrify
