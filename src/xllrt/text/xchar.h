#pragma once

namespace metrify {

/// One UTF-16 unit of a wide text. wchar_t has that size on Windows only.
using XCHAR = char16_t;

} // namespace metrify
