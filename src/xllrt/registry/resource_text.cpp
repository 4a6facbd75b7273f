#include "xllrt/registry/resource_text.h"

#include "xllrt/registry/host_language.h"
#include "xllrt/text/code_page.h"
#include "xllrt/text/string_resource.h"

#include <cstdint>
#include <optional>

namespace metrify {

namespace {

// String tables have no ids from here on; larger numbers are not computed.
constexpr std::uint32_t kIdTooLarge = 0x10000;

// The value of a digit in base 16, or 16.
std::uint32_t DigitValue(char16_t c) {
    if (c >= u'0' && c <= u'9')
        return static_cast<std::uint32_t>(c - u'0');
    if (c >= u'a' && c <= u'f')
        return static_cast<std::uint32_t>(c - u'a' + 10);
    if (c >= u'A' && c <= u'F')
        return static_cast<std::uint32_t>(c - u'A' + 10);
    return 16;
}

// The digits of a base at the start of a text: how many there are, and their value.
struct Digits {
    std::size_t count = 0;
    std::uint32_t value = 0;
};

Digits ReadDigits(std::u16string_view text, std::uint32_t base) {
    Digits digits;
    while (digits.count < text.size() && DigitValue(text[digits.count]) < base) {
        if (digits.value < kIdTooLarge)
            digits.value = digits.value * base + DigitValue(text[digits.count]);
        ++digits.count;
    }
    return digits;
}

// reference := "#" [ "@" ] number
// number    := ( "0x" | "0X" ) { hexadecimal digit } | digit { digit }
struct Reference {
    std::size_t length = 0; // including "#" and "@"
    bool of_host = false;
    bool has_number = false;
    std::optional<std::uint32_t> id;
};

Reference ReadReference(std::u16string_view text) {
    Reference reference;
    reference.of_host = text.substr(1).starts_with(u'@');
    reference.length = reference.of_host ? 2 : 1;
    const std::u16string_view number = text.substr(reference.length);
    if (number.starts_with(u"0x") || number.starts_with(u"0X")) {
        const Digits digits = ReadDigits(number.substr(2), 16);
        reference.has_number = true;
        reference.length += 2 + digits.count;
        // Intentional: after a capital X the value is that of the decimal number "0", and 0 is no id. The
        // digits are skipped all the same.
        if (number[1] == u'x' && digits.count > 0)
            reference.id = digits.value;
    } else {
        const Digits digits = ReadDigits(number, 10);
        reference.has_number = digits.count > 0;
        reference.length += digits.count;
        if (digits.value > 0)
            reference.id = digits.value;
    }
    return reference;
}

} // namespace

bool ExpandResourceText(std::u16string_view text, std::u16string& expansion) {
    std::u16string expanded;
    bool resolved = true;
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find(u'#'), text.size());
        expanded += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            break;
        const Reference reference = ReadReference(text);
        std::u16string string;
        if (reference.id &&
            LoadResourceText(string, *reference.id, reference.of_host ? HostLanguage() : TextLanguage())) {
            expanded += string;
        } else {
            expanded += text.substr(0, reference.length);
            resolved = resolved && !reference.has_number;
        }
        text.remove_prefix(reference.length);
    }
    expansion = std::move(expanded);
    return resolved;
}

bool ExpandResourceText(std::string_view text, std::string& expansion) {
    std::u16string wide;
    const bool resolved = ExpandResourceText(ToWide(text), wide);
    expansion = ToNarrow(wide);
    return resolved;
}

std::u16string LocalizedText(const char16_t* text) {
    if (!text)
        return {};
    std::u16string expansion;
    return ExpandResourceText(text, expansion) ? expansion : text;
}

std::string LocalizedText(const char* text) {
    if (!text)
        return {};
    std::string expansion;
    return ExpandResourceText(text, expansion) ? expansion : text;
}

} // namespace metrify
