#pragma once

// How a numerical routine reports a failure: a text in the error text, and 0 as its value.

#include "base/text_str.h"

#include <string_view>

namespace metrify {

/// Appends the text and gives 0.0, which is what a routine returns that fails.
inline double numeric_failure(text_str*& err, std::string_view text) {
    append(err, text);
    return 0.0;
}

} // namespace metrify
