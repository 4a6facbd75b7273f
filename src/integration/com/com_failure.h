#pragma once

// The error report of the COM code.

#include "integration/com/com_value.h"
#include "xllrt/text/string_formatter.h"

#include <string>
#include <utility>

namespace metrify {

/// A text that names a failed call has the code of that call. A complete sentence has `S_FALSE`, which is not
/// a failure code, so that no code is shown with it.
struct ComFailure {
    std::u16string text; ///< without a line end
    HRESULT code = S_OK;

    static ComFailure Sentence(std::u16string text) { return {std::move(text), S_FALSE}; }
};

/// The name of the failed call followed by the system's text for the code.
std::u16string SystemText(std::u16string_view name, HRESULT code);

/// Formats a code as "0x80004005".
std::u16string CodeText(HRESULT code);

/// Formats a text with placeholders.
template <class... Arguments>
std::u16string FilledText(const char16_t* format, const Arguments&... arguments) {
    std::u16string text;
    psl::Format(text, format, arguments...);
    return text;
}

} // namespace metrify
