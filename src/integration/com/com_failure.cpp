#include "integration/com/com_failure.h"

#include "xllrt/text/format_printf.h"

#include <array>
#include <windows.h>

namespace metrify {

std::u16string CodeText(HRESULT code) {
    std::u16string text;
    FormatPrintf(text, u"0x%lX", static_cast<std::uint32_t>(code));
    return text;
}

std::u16string SystemText(std::u16string_view name, HRESULT code) {
    std::array<wchar_t, 512> buffer{};
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                   static_cast<DWORD>(code), 0, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
    std::u16string words = TextOf(buffer.data());
    words.resize(words.find_last_not_of(u"\r\n ") + 1); // nothing found gives 0
    return FilledText(u"{0}: {1}", name, words.empty() ? CodeText(code) : words);
}

} // namespace metrify
