#pragma once

// Conversion between wide text in UTF-16 and narrow text in the system's ANSI code page.
//
// On Windows this is the code page that the system is set to. Elsewhere it is 1252, with the bytes that
// Windows uses for it, best fits included.

#include <string>
#include <string_view>

namespace metrify {

/// The text in UTF-16.
std::u16string ToWide(std::string_view text);

/// The text in the ANSI code page. Characters that are not in the page are replaced, in general by a question
/// mark.
std::string ToNarrow(std::u16string_view text);

} // namespace metrify
