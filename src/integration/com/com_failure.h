#pragma once

// What the COM helper says when it fails.

#include "integration/com/com_value.h"
#include "xllrt/text/string_formatter.h"

#include <string>
#include <utility>

namespace metrify {

/// A text that names the call that failed comes with the code of that call. A text that is a sentence of its
/// own comes with `S_FALSE`, which is no failure code, so that whoever shows it adds no code to it.
struct ComFailure {
    std::u16string text; ///< without a line end
    HRESULT code = S_OK;

    static ComFailure Sentence(std::u16string text) { return {std::move(text), S_FALSE}; }
};

/// The system's text for a result code, after the name of what failed.
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
