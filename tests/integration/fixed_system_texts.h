#pragma once

// Fixed texts for result codes in place of the system's, which depend on its language and version.

#include "tests/integration/replaced_call.h"

#include <string>
#include <windows.h>

namespace metrify::host {

/// During its lifetime the text of a code is "text of" and its eight digits, with a line end like the
/// system's texts.
class FixedSystemTexts {
  public:
    FixedSystemTexts() = default;

  private:
    static DWORD WINAPI Format(DWORD /*flags*/, const void* /*source*/, DWORD code, DWORD /*language*/,
                               wchar_t* text, DWORD size, va_list* /*arguments*/) {
        static constexpr char kDigits[] = "0123456789ABCDEF";
        std::wstring content = L"text of ";
        for (int shift = 28; shift >= 0; shift -= 4)
            content += static_cast<wchar_t>(kDigits[code >> shift & 15U]);
        content += L"\r\n";
        lstrcpynW(text, content.c_str(), static_cast<int>(size));
        return static_cast<DWORD>(content.size());
    }

    ReplacedPointer format_{ImportedFunction("FormatMessageW"), AddressOf(Format)};
};

} // namespace metrify::host
