#pragma once

// The texts that cells show for error codes.

#include <string>
#include <string_view>

namespace metrify {

/// The text of an error code; empty for a code that is none of the host's.
std::string_view ErrorText(int code);
std::u16string_view WideErrorText(int code);

/// Puts the text of an error code into `text`. Gives false, and leaves the text alone, for a code without
/// text and for code 0, whose text "#NULL!" is not given here.
bool ErrorCodeToText(int code, std::string& text);
bool ErrorCodeToText(int code, std::u16string& text);

} // namespace metrify
