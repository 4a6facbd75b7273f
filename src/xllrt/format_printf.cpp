#include "xllrt/format_printf.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

namespace metrify {

namespace {

struct Conversion {
    bool left = false;
    bool zeros = false;
    char sign = 0; // before a number that is not negative: '+', ' ' or nothing
    std::size_t width = 0;
    std::optional<int> precision;
    char letter = 0;
};

template <class Char>
bool IsOneOf(Char c, std::string_view ascii) {
    return c > 0 && c <= 0x7F && ascii.find(static_cast<char>(c)) != ascii.npos;
}

// conversion := { flag } [ width ] [ "." precision ] { length } letter
template <class Char>
class ConversionReader {
  public:
    explicit ConversionReader(std::basic_string_view<Char> text) : rest_(text) {}

    Conversion Read() {
        Conversion read;
        while (const char flag = Take("-0+ "))
            AddFlag(read, flag);
        read.width = static_cast<std::size_t>(ReadNumber());
        if (Take("."))
            read.precision = ReadNumber();
        while (Take("hlLjzt")) {
        }
        read.letter = Take("scdiuxXoeEfFgG");
        return read;
    }

    std::size_t length_left() const { return rest_.size(); }

  private:
    // The next character if it is one of these, otherwise nothing.
    char Take(std::string_view these) {
        if (rest_.empty() || !IsOneOf(rest_.front(), these))
            return 0;
        const auto taken = static_cast<char>(rest_.front());
        rest_.remove_prefix(1);
        return taken;
    }

    // Digits, if there are any. More than the buffer takes is as good as the buffer.
    int ReadNumber() {
        int number = 0;
        while (const char digit = Take("0123456789"))
            number = std::min(number * 10 + (digit - '0'), static_cast<int>(kPrintfBuffer));
        return number;
    }

    static void AddFlag(Conversion& conversion, char flag) {
        switch (flag) {
        case '-':
            conversion.left = true;
            break;
        case '0':
            conversion.zeros = true;
            break;
        case '+':
            conversion.sign = '+';
            break;
        default:
            if (conversion.sign == 0)
                conversion.sign = ' ';
        }
    }

    std::basic_string_view<Char> rest_;
};

void MakeUpper(std::string& text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    }
}

// A number without its sign, and the sign.
struct NumberText {
    std::string sign;
    std::string digits;
};

template <class Char>
NumberText IntegerText(const Conversion& conversion, const PrintfArgument<Char>& argument) {
    unsigned long long value = argument.integer;
    NumberText text;
    int base = 10;
    if (IsOneOf(conversion.letter, "di")) {
        if (argument.negative)
            value = 0 - value;
        text.sign = argument.negative ? std::string(1, '-')
                                      : std::string(conversion.sign != 0 ? 1 : 0, conversion.sign);
    } else {
        if (argument.bits < 64)
            value &= (1ULL << argument.bits) - 1;
        base = conversion.letter == 'u' ? 10 : conversion.letter == 'o' ? 8 : 16;
    }
    char buffer[32];
    text.digits.assign(buffer, std::to_chars(std::begin(buffer), std::end(buffer), value, base).ptr);
    if (conversion.letter == 'X')
        MakeUpper(text.digits);
    const auto least = static_cast<std::size_t>(conversion.precision.value_or(1));
    if (text.digits.size() < least)
        text.digits.insert(0, least - text.digits.size(), '0');
    return text;
}

NumberText FloatText(const Conversion& conversion, double value) {
    NumberText text;
    text.sign = std::signbit(value) ? std::string(1, '-')
                                    : std::string(conversion.sign != 0 ? 1 : 0, conversion.sign);
    const std::chars_format form = IsOneOf(conversion.letter, "eE")   ? std::chars_format::scientific
                                   : IsOneOf(conversion.letter, "fF") ? std::chars_format::fixed
                                                                      : std::chars_format::general;
    char buffer[2 * kPrintfBuffer];
    const std::to_chars_result end = std::to_chars(std::begin(buffer), std::end(buffer), std::fabs(value),
                                                   form, conversion.precision.value_or(6));
    text.digits.assign(buffer, end.ptr);
    if (IsOneOf(conversion.letter, "EFG"))
        MakeUpper(text.digits);
    return text;
}

template <class Char>
std::basic_string<Char> Widened(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

template <class Char>
std::basic_string<Char> Padded(const Conversion& conversion, std::basic_string<Char> text,
                               std::size_t zeros_at, bool zeros) {
    if (text.size() >= conversion.width)
        return text;
    const std::size_t missing = conversion.width - text.size();
    if (conversion.left)
        text.append(missing, Char(' '));
    else if (zeros)
        text.insert(zeros_at, missing, Char('0'));
    else
        text.insert(0, missing, Char(' '));
    return text;
}

template <class Char>
std::basic_string<Char> PaddedNumber(const Conversion& conversion, const NumberText& text, bool zeros) {
    return Padded(conversion, Widened<Char>(text.sign + text.digits), text.sign.size(), zeros);
}

// The text of one conversion, or nothing if the argument is not of its kind.
template <class Char>
std::optional<std::basic_string<Char>> Converted(const Conversion& conversion,
                                                 const PrintfArgument<Char>& argument) {
    using Kind = typename PrintfArgument<Char>::Kind;
    if (conversion.letter == 's' && argument.kind == Kind::text) {
        const auto length = static_cast<std::size_t>(conversion.precision.value_or(kPrintfBuffer));
        return Padded(conversion, std::basic_string<Char>(argument.text.substr(0, length)), 0, false);
    }
    if (conversion.letter == 'c' && argument.kind == Kind::integer)
        return Padded(conversion, std::basic_string<Char>(1, static_cast<Char>(argument.integer)), 0, false);
    if (IsOneOf(conversion.letter, "diuxXo") && argument.kind == Kind::integer)
        return PaddedNumber<Char>(conversion, IntegerText(conversion, argument),
                                  conversion.zeros && !conversion.precision);
    if (IsOneOf(conversion.letter, "eEfFgG") && argument.kind == Kind::number)
        return PaddedNumber<Char>(conversion, FloatText(conversion, argument.number),
                                  conversion.zeros && std::isfinite(argument.number));
    return std::nullopt;
}

} // namespace

template <class Char>
void FormatPrintfList(std::basic_string<Char>& out, const Char* format,
                      std::span<const PrintfArgument<Char>> arguments) {
    constexpr Char percent = '%';
    std::basic_string<Char> formatted;
    std::basic_string_view<Char> rest = format;
    while (!rest.empty() && formatted.size() < kPrintfBuffer) {
        const std::size_t plain = std::min(rest.find(percent), rest.size());
        formatted += rest.substr(0, plain);
        rest.remove_prefix(plain);
        if (rest.starts_with(std::basic_string<Char>(2, percent))) {
            formatted += percent;
            rest.remove_prefix(2);
        } else if (!rest.empty()) {
            ConversionReader<Char> reader(rest.substr(1));
            const Conversion conversion = reader.Read();
            const std::size_t length = rest.size() - reader.length_left();
            std::optional<std::basic_string<Char>> text;
            if (!arguments.empty())
                text = Converted(conversion, arguments.front());
            if (text)
                arguments = arguments.subspan(1);
            formatted += text ? *text : std::basic_string<Char>(rest.substr(0, length));
            rest.remove_prefix(length);
        }
    }
    formatted.resize(std::min(formatted.size(), kPrintfBuffer - 1));
    out = std::move(formatted);
}

template void FormatPrintfList(std::string&, const char*, std::span<const PrintfArgument<char>>);
template void FormatPrintfList(std::u16string&, const char16_t*, std::span<const PrintfArgument<char16_t>>);

} // namespace metrify
