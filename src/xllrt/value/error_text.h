#pragma once

// The texts that cells show for error codes.

#include <string>
#include <string_view>

namespace metrify {

/// The text of an error code; empty for an unknown code.
std::string_view ErrorText(int code);
std::u16string_view WideErrorText(int code);

/// Puts the text of an error code into `text`. False, with the text unchanged, for a code without text, and
/// for code 0, although that has the text "#NULL!".
bool ErrorCodeToText(int code, std::string& text);
bool ErrorCodeToText(int code, std::u16string& text);

} // namespace metrify
