#include "cli/typed_text.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cwchar>

namespace metrify {

namespace {

// Surrogates, which are no characters by themselves.
constexpr wchar_t first_lone_byte = 0xDC00;

bool is_lone_byte(wchar_t c) {
    return c >= first_lone_byte && c <= first_lone_byte + 0xFF;
}

} // namespace

void typed_text::take(char byte, std::wstring& characters) {
    constexpr auto incomplete = static_cast<std::size_t>(-2);
    constexpr auto invalid = static_cast<std::size_t>(-1);
    pending_ += byte;
    while (!pending_.empty()) {
        std::mbstate_t start = {};
        wchar_t character = L'\0';
        // NOLINTNEXTLINE(concurrency-mt-unsafe): the state is not the shared one
        const std::size_t length = std::mbrtowc(&character, pending_.data(), pending_.size(), &start);
        if (length == incomplete)
            return;
        if (length == invalid)
            character = static_cast<wchar_t>(first_lone_byte + static_cast<unsigned char>(pending_[0]));
        characters += character;
        pending_.erase(0, length == invalid ? 1 : std::max<std::size_t>(length, 1));
    }
}

std::string typed_text::bytes_of(std::wstring_view characters) {
    std::string bytes;
    std::array<char, MB_LEN_MAX> encoded = {};
    for (const wchar_t character : characters) {
        if (is_lone_byte(character)) {
            bytes += static_cast<char>(character - first_lone_byte);
            continue;
        }
        std::mbstate_t start = {};
        // NOLINTNEXTLINE(concurrency-mt-unsafe): the state is not the shared one
        const std::size_t length = std::wcrtomb(encoded.data(), character, &start);
        if (length <= encoded.size())
            bytes.append(encoded.data(), length);
    }
    return bytes;
}

} // namespace metrify
