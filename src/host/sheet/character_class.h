#pragma once

// ASCII letters and digits in the host's texts.

namespace metrify::host {

constexpr bool IsLetter(char16_t c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

constexpr bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

} // namespace metrify::host
