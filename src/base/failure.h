#pragma once

// A numerical routine reports a failure by a message in err and returns 0.

#include "base/text_str.h"

#include <string_view>

namespace metrify {

/// Appends the text and returns 0.0, the value of a routine that fails.
inline double numeric_failure(text_str*& err, std::string_view text) {
    append(err, text);
    return 0.0;
}

} // namespace metrify
