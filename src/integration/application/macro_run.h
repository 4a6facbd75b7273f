#pragma once

// Macros run by a host's application object.

#include "integration/com/com_value.h"

#include <span>
#include <string_view>

namespace metrify {

/// Runs a macro text.
HRESULT RunExcelMacroFromDisp(IDispatch* application, std::u16string_view text, ComVariant& answer);

/// Runs a macro text with the host's alerts switched off. Returns `E_POINTER` without application.
HRESULT RunMacroByText(IDispatch* application, std::u16string_view text, ComVariant& answer);

/// The same for a macro's name, which is the first of the arguments.
HRESULT RunMacroByName(IDispatch* application, std::span<const ComVariant> arguments, ComVariant& answer);

} // namespace metrify
