#pragma once

// How routines report failures: by a message in err. Numerical routines also return 0.

#include "base/text_str.h"

#include <string_view>

namespace metrify {

/// Appends the text and returns 0.0, the value of a routine that fails.
inline double numeric_failure(text_str*& err, std::string_view text) {
    append(err, text);
    return 0.0;
}

/// Replaces the text in err by the message, which may consist of several parts.
template <class... Parts>
void replace_message(text_str*& err, const Parts&... message) {
    str_clear(&err);
    append(err, message...);
}

} // namespace metrify
