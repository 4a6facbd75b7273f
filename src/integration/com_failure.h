#pragma once

// What the road to the host says when it fails.

#include "integration/com_value.h"
#include "xllrt/string_formatter.h"

#include <string>

namespace metrify {

struct ComFailure {
    std::u16string text; ///< without a line end
    HRESULT code = S_OK;
};

/// The system's words for a result code, behind the name of what failed.
std::u16string SystemText(std::u16string_view name, HRESULT code);

/// A code as "0x80004005".
std::u16string CodeText(HRESULT code);

/// A text with its placeholders filled in.
template <class... Arguments>
std::u16string FilledText(const char16_t* format, const Arguments&... arguments) {
    std::u16string text;
    psl::Format(text, format, arguments...);
    return text;
}

} // namespace metrify
