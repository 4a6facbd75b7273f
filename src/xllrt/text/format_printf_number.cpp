#include "xllrt/text/format_printf_number.h"

#include "xllrt/text/format_printf.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <string_view>
#include <utility>

namespace metrify {

namespace {

constexpr int kDefaultPrecision = 6;

bool IsCapital(char letter) {
    return letter >= 'A' && letter <= 'Z';
}

char Lower(char letter) {
    return IsCapital(letter) ? static_cast<char>(letter - 'A' + 'a') : letter;
}

void MakeUpper(std::string& text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
}

std::string SignText(const PrintfConversion& conversion, bool is_negative) {
    if (is_negative)
        return "-";
    return std::string(conversion.sign != 0 ? 1 : 0, conversion.sign);
}

// ---- Integers

int BitsTaken(PrintfLength length, int bits) {
    switch (length) {
    case PrintfLength::hh:
        return 8;
    case PrintfLength::h:
        return 16;
    case PrintfLength::ll:
    case PrintfLength::j:
        return 64;
    default:
        // How wide a long is depends on the platform; the argument's own type does not.
        return bits;
    }
}

std::string DigitsOf(std::uint64_t value, int base, std::optional<int> precision) {
    char buffer[32];
    std::string digits(buffer, std::to_chars(std::begin(buffer), std::end(buffer), value, base).ptr);
    if (value == 0 && precision == 0)
        digits.clear();
    const auto least = static_cast<std::size_t>(precision.value_or(1));
    digits.insert(0, least - std::min(least, digits.size()), '0');
    return digits;
}

PrintfNumber SignedText(const PrintfConversion& conversion, std::uint64_t value, int unused_bits) {
    const std::int64_t number = static_cast<std::int64_t>(value << unused_bits) >> unused_bits;
    const auto magnitude = static_cast<std::uint64_t>(number);
    return {SignText(conversion, number < 0),
            DigitsOf(number < 0 ? 0 - magnitude : magnitude, 10, conversion.precision)};
}

// ---- Floating-point numbers

std::string DigitsOf(double value, std::chars_format form, std::optional<int> precision) {
    char buffer[2 * kPrintfBuffer];
    const std::to_chars_result end =
        precision ? std::to_chars(std::begin(buffer), std::end(buffer), value, form, *precision)
                  : std::to_chars(std::begin(buffer), std::end(buffer), value, form);
    return {buffer, end.ptr};
}

// The shorter form, as %g, with its zeros at the end.
std::string GeneralWithZeros(double value, int precision) {
    const int significant = std::max(precision, 1);
    std::string scientific = DigitsOf(value, std::chars_format::scientific, significant - 1);
    const char* begin = scientific.data() + scientific.find('e') + 1;
    begin += *begin == '+' ? 1 : 0;
    int exponent = 0;
    std::from_chars(begin, scientific.data() + scientific.size(), exponent);
    if (exponent < -4 || exponent >= significant)
        return scientific;
    return DigitsOf(value, std::chars_format::fixed, significant - 1 - exponent);
}

std::string FiniteDigits(const PrintfConversion& conversion, double value) {
    const int precision = conversion.precision.value_or(kDefaultPrecision);
    switch (Lower(conversion.letter)) {
    case 'e':
        return DigitsOf(value, std::chars_format::scientific, precision);
    case 'f':
        return DigitsOf(value, std::chars_format::fixed, precision);
    case 'g':
        return conversion.alternate ? GeneralWithZeros(value, precision)
                                    : DigitsOf(value, std::chars_format::general, precision);
    default:
        // Without a precision as many digits as the number has.
        return DigitsOf(value, std::chars_format::hex, conversion.precision);
    }
}

// Puts a point after the digits, before the exponent, if there is none.
void AddPoint(std::string& digits, bool is_hex) {
    if (digits.find('.') == std::string::npos)
        digits.insert(std::min(digits.find(is_hex ? 'p' : 'e'), digits.size()), 1, '.');
}

} // namespace

PrintfNumber IntegerText(const PrintfConversion& conversion, std::uint64_t value, int bits) {
    const int unused_bits = 64 - BitsTaken(conversion.length, bits);
    if (conversion.letter == 'd' || conversion.letter == 'i')
        return SignedText(conversion, value, unused_bits);
    value = (value << unused_bits) >> unused_bits;
    const int base = conversion.letter == 'u' ? 10 : conversion.letter == 'o' ? 8 : 16;
    PrintfNumber text{"", DigitsOf(value, base, conversion.precision)};
    if (conversion.alternate && base == 8 && !text.digits.starts_with('0'))
        text.digits.insert(0, 1, '0');
    if (conversion.alternate && base == 16 && value != 0)
        text.prefix = "0x";
    if (conversion.letter == 'X') {
        MakeUpper(text.prefix);
        MakeUpper(text.digits);
    }
    return text;
}

PrintfNumber FloatText(const PrintfConversion& conversion, double value) {
    PrintfNumber text{SignText(conversion, std::signbit(value)), ""};
    if (std::isfinite(value)) {
        const bool is_hex = Lower(conversion.letter) == 'a';
        text.digits = FiniteDigits(conversion, std::fabs(value));
        if (is_hex)
            text.prefix += "0x";
        if (conversion.alternate)
            AddPoint(text.digits, is_hex);
    } else {
        text.digits = std::isnan(value) ? "nan" : "inf";
    }
    if (IsCapital(conversion.letter)) {
        MakeUpper(text.prefix);
        MakeUpper(text.digits);
    }
    return text;
}

} // namespace metrify
