#pragma once

// Text of the host, UTF-16, to and from UTF-8.

#include <string>
#include <string_view>

namespace metrify::host {

/// What is no UTF-8 arrives as U+FFFD.
std::u16string FromUtf8(std::string_view text);

/// Half a surrogate pair arrives as U+FFFD.
std::string ToUtf8(std::u16string_view text);

} // namespace metrify::host
