#pragma once

// Text between its two widths: UTF-16, and the system's ANSI code page on the narrow side.
//
// On Windows the code page is the one the system is set to. Elsewhere it is 1252, with the bytes that Windows
// gives for it, best fits included.

#include <string>
#include <string_view>

namespace metrify {

/// The text in UTF-16.
std::u16string ToWide(std::string_view text);

/// The text in the ANSI code page. What the page does not hold arrives altered, in general as a question
/// mark.
std::string ToNarrow(std::u16string_view text);

} // namespace metrify
