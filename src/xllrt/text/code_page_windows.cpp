#include "xllrt/text/code_page.h"

#include <algorithm>
#include <limits>
#include <windows.h>

namespace metrify {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

namespace {

// The system takes lengths as int. A longer text is cut.
int CountOf(std::size_t length) {
    return static_cast<int>(std::min<std::size_t>(length, std::numeric_limits<int>::max()));
}

} // namespace

std::u16string ToWide(std::string_view text) {
    if (text.empty())
        return {};
    const int count = CountOf(text.size());
    const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), count, nullptr, 0);
    std::u16string wide(static_cast<std::size_t>(length), u'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), count, reinterpret_cast<wchar_t*>(wide.data()), length);
    return wide;
}

std::string ToNarrow(std::u16string_view text) {
    if (text.empty())
        return {};
    const auto* units = reinterpret_cast<const wchar_t*>(text.data());
    const int count = CountOf(text.size());
    const int length = WideCharToMultiByte(CP_ACP, 0, units, count, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_ACP, 0, units, count, narrow.data(), length, nullptr, nullptr);
    return narrow;
}

} // namespace metrify
