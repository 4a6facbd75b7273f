#pragma once

// The macro of the add-in's menu. It opens the host's function wizard on the active cell.

#include "xllrt/platform/export.h"
#include "xllrt/value/xl_oper.h"

#include <string>

namespace metrify {

/// Enters a call of the function into the active cell, unless the cell contains one, and opens the wizard on
/// it. Other contents of the cell are replaced only if the user agrees. False if there is no active cell or
/// the user doesn't agree.
bool start_function_wizard(const std::string& name);

/// The same for the given cell.
bool start_function_wizard_on(const CXlOper& cell, const std::string& name);

extern "C" {

METRIFY_EXPORT XLOPER12* METRIFY_HOST_CALL Metrify_Macro_12();
METRIFY_EXPORT XLOPER* METRIFY_HOST_CALL Metrify_Macro_4();
}

} // namespace metrify
