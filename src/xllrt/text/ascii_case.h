#pragma once

// Comparison of texts with the case of ASCII letters ignored. Other letters are compared as they are.

#include <algorithm>
#include <string_view>

namespace metrify {

/// The character, a capital ASCII letter as the small one.
constexpr char16_t FoldedCase(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

/// The order of two texts: negative, 0 or positive.
constexpr int CompareIgnoringCase(std::u16string_view left, std::u16string_view right) {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i)
        if (FoldedCase(left[i]) != FoldedCase(right[i]))
            return FoldedCase(left[i]) < FoldedCase(right[i]) ? -1 : 1;
    return left.size() == right.size() ? 0 : (left.size() < right.size() ? -1 : 1);
}

constexpr bool EqualIgnoringCase(std::u16string_view left, std::u16string_view right) {
    return CompareIgnoringCase(left, right) == 0;
}

} // namespace metrify
