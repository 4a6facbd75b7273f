#pragma once

// What is typed at a terminal, byte by byte, as the characters that a line editor works on, and back again. A
// byte that is no part of a character in the terminal's encoding is carried through as a code point that no
// text holds, so each byte comes out as it went in.

#include <string>
#include <string_view>

namespace metrify {

class typed_text {
  public:
    /// Takes the next byte in and appends the characters that are complete with it.
    void take(char byte, std::wstring& characters);

    /// The bytes that the characters were made of.
    static std::string bytes_of(std::wstring_view characters);

  private:
    std::string pending_; // the start of a character
};

} // namespace metrify
