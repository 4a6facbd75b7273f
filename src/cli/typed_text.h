#pragma once

// Conversion between the bytes typed at a terminal and the characters of a line editor. A byte that is not
// part of a character in the terminal's encoding is represented by a code point that is no character, so that
// the conversion back gives the same bytes.

#include <string>
#include <string_view>

namespace metrify {

class typed_text {
  public:
    /// Decodes the next byte and appends the characters that it completes.
    void take(char byte, std::wstring& characters);

    /// The bytes from which the characters were decoded.
    static std::string bytes_of(std::wstring_view characters);

  private:
    std::string pending_; // the start of a character
};

} // namespace metrify
