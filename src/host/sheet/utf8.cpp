#include "host/sheet/utf8.h"

#include <cstdint>

namespace metrify::host {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char32_t kLast = 0x10FFFF;

bool IsHighSurrogate(char32_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}

bool IsLowSurrogate(char32_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

// The properties of a sequence that follow from its first byte.
struct SequenceKind {
    std::size_t following;
    char32_t first_bits;
    char32_t smallest; // characters below this have a shorter sequence
};

SequenceKind KindOf(std::uint8_t first) {
    if (first < 0x80)
        return {0, first, 0};
    if (first >= 0xC0 && first < 0xE0)
        return {1, first & 0x1FU, 0x80};
    if (first >= 0xE0 && first < 0xF0)
        return {2, first & 0x0FU, 0x800};
    if (first >= 0xF0 && first < 0xF8)
        return {3, first & 0x07U, kFirstSupplementary};
    return {0, kReplacement, 0};
}

char32_t TakeCharacter(std::string_view& text) {
    const SequenceKind kind = KindOf(static_cast<std::uint8_t>(text.front()));
    text.remove_prefix(1);
    char32_t c = kind.first_bits;
    for (std::size_t i = 0; i < kind.following; ++i) {
        if (text.empty() || (static_cast<std::uint8_t>(text.front()) & 0xC0U) != 0x80)
            return kReplacement;
        c = (c << 6U) | (static_cast<std::uint8_t>(text.front()) & 0x3FU);
        text.remove_prefix(1);
    }
    const bool is_surrogate = IsHighSurrogate(c) || IsLowSurrogate(c);
    return c < kind.smallest || c > kLast || is_surrogate ? kReplacement : c;
}

void Append(std::string& text, char32_t c) {
    const auto following = [&text, c](unsigned shift) {
        text += static_cast<char>(0x80U | ((c >> shift) & 0x3FU));
    };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0U | (c >> 6U));
        following(0);
    } else if (c < kFirstSupplementary) {
        text += static_cast<char>(0xE0U | (c >> 12U));
        following(6);
        following(0);
    } else {
        text += static_cast<char>(0xF0U | (c >> 18U));
        following(12);
        following(6);
        following(0);
    }
}

} // namespace

std::u16string FromUtf8(std::string_view text) {
    std::u16string units;
    while (!text.empty()) {
        const char32_t c = TakeCharacter(text);
        if (c < kFirstSupplementary) {
            units += static_cast<char16_t>(c);
        } else {
            units += static_cast<char16_t>(0xD800 + ((c - kFirstSupplementary) >> 10U));
            units += static_cast<char16_t>(0xDC00 + ((c - kFirstSupplementary) & 0x3FFU));
        }
    }
    return units;
}

std::string ToUtf8(std::u16string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (IsHighSurrogate(c) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            c = kFirstSupplementary + ((c - 0xD800) << 10U) + (text[i + 1] - 0xDC00U);
            ++i;
        }
        Append(bytes, IsHighSurrogate(c) || IsLowSurrogate(c) ? kReplacement : c);
    }
    return bytes;
}

} // namespace metrify::host
