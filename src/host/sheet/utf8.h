#pragma once

// Conversion between UTF-16, the encoding of the host's texts, and UTF-8.

#include <string>
#include <string_view>

namespace metrify::host {

/// Invalid UTF-8 becomes U+FFFD.
std::u16string FromUtf8(std::string_view text);

/// An unpaired surrogate becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);

} // namespace metrify::host
