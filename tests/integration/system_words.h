#pragma once

// The system's texts for result codes differ with its language and version; as long as this lives they don't.

#include "tests/integration/replaced_call.h"

#include <string>
#include <windows.h>

namespace metrify::host {

/// The text for a code is "words for" and its eight digits, with a line end as the system's texts have.
class SystemWords {
  public:
    SystemWords() = default;

  private:
    static DWORD WINAPI Format(DWORD /*flags*/, const void* /*source*/, DWORD code, DWORD /*language*/,
                               wchar_t* text, DWORD size, va_list* /*arguments*/) {
        static constexpr char kDigits[] = "0123456789ABCDEF";
        std::wstring words = L"words for ";
        for (int shift = 28; shift >= 0; shift -= 4)
            words += static_cast<wchar_t>(kDigits[code >> shift & 15U]);
        words += L"\r\n";
        lstrcpynW(text, words.c_str(), static_cast<int>(size));
        return static_cast<DWORD>(words.size());
    }

    ReplacedPointer format_{ImportedFunction("FormatMessageW"), AddressOf(Format)};
};

} // namespace metrify::host
