#include "xllrt/text/format_printf.h"

#include "xllrt/text/code_page.h"
#include "xllrt/text/format_printf_number.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace metrify {

namespace {

bool IsOneOf(char c, std::string_view these) {
    return c != 0 && these.find(c) != these.npos;
}

// ---- Reading

// conversion := { flag } [ width ] [ "." [ precision ] ] [ length ] letter
// width, precision := { digit } | "*"
template <class Char>
class ConversionReader {
  public:
    using Arguments = std::span<const PrintfArgument<Char>>;

    ConversionReader(std::basic_string_view<Char> text, Arguments arguments)
        : rest_(text), arguments_(arguments) {}

    // Nothing if there is no such conversion, or no integer for a star.
    std::optional<PrintfConversion> Read() {
        PrintfConversion read;
        while (const char flag = Take("-0+ #"))
            AddFlag(read, flag);
        const int width = ReadNumber();
        read.left = read.left || width < 0;
        read.width = static_cast<std::size_t>(width < 0 ? -width : width);
        if (Take(".")) {
            const int precision = ReadNumber();
            if (precision >= 0)
                read.precision = precision;
        }
        read.length = ReadLength();
        read.letter = Take("scdiuxXoeEfFgGaAp");
        if (read.letter == 0 && !rest_.empty())
            rest_.remove_prefix(1);
        return read.letter != 0 && !misses_star_ ? std::optional(read) : std::nullopt;
    }

    // What is left after Read.
    std::size_t length_left() const { return rest_.size(); }
    Arguments arguments_left() const { return arguments_; }

  private:
    // The next character if it is one of these, otherwise nothing.
    char Take(std::string_view these) {
        if (rest_.empty() || rest_.front() <= 0 || rest_.front() > 0x7F ||
            !IsOneOf(static_cast<char>(rest_.front()), these))
            return 0;
        const auto taken = static_cast<char>(rest_.front());
        rest_.remove_prefix(1);
        return taken;
    }

    // Digits, if there are any, or the argument of a star. A number larger than the buffer counts as the
    // buffer's size.
    int ReadNumber() {
        constexpr int kMost = kPrintfBuffer;
        if (Take("*"))
            return static_cast<int>(std::clamp<std::int64_t>(TakeStar(), -kMost, kMost));
        int number = 0;
        while (const char digit = Take("0123456789"))
            number = std::min(number * 10 + (digit - '0'), kMost);
        return number;
    }

    std::int64_t TakeStar() {
        if (arguments_.empty() || arguments_.front().kind != PrintfArgument<Char>::Kind::integer) {
            misses_star_ = true;
            return 0;
        }
        const auto taken = static_cast<std::int64_t>(arguments_.front().integer);
        arguments_ = arguments_.subspan(1);
        return taken;
    }

    PrintfLength ReadLength() {
        switch (Take("hljztL")) {
        case 'h':
            return Take("h") ? PrintfLength::hh : PrintfLength::h;
        case 'l':
            return Take("l") ? PrintfLength::ll : PrintfLength::l;
        case 'j':
            return PrintfLength::j;
        case 'z':
            return PrintfLength::z;
        case 't':
            return PrintfLength::t;
        case 'L':
            return PrintfLength::L;
        default:
            return PrintfLength::none;
        }
    }

    static void AddFlag(PrintfConversion& conversion, char flag) {
        switch (flag) {
        case '-':
            conversion.left = true;
            break;
        case '0':
            conversion.zeros = true;
            break;
        case '#':
            conversion.alternate = true;
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
    Arguments arguments_;
    bool misses_star_ = false;
};

// ---- Converting

void Convert(std::string_view text, std::u16string& converted) {
    converted = ToWide(text);
}

void Convert(std::u16string_view text, std::string& converted) {
    converted = ToNarrow(text);
}

template <class Char>
std::basic_string<Char> Padded(const PrintfConversion& conversion, std::basic_string<Char> text,
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
std::basic_string<Char> PaddedText(const PrintfConversion& conversion, std::basic_string<Char> text) {
    return Padded(conversion, std::move(text), 0, false);
}

template <class Char>
std::basic_string<Char> PaddedNumber(const PrintfConversion& conversion, const PrintfNumber& number,
                                     bool zeros) {
    const std::string text = number.prefix + number.digits;
    return Padded(conversion, std::basic_string<Char>(text.begin(), text.end()), number.prefix.size(), zeros);
}

// Whether a text or character is wide, by its length.
template <class Char>
bool WantsWide(const PrintfConversion& conversion) {
    return conversion.length == PrintfLength::none ? sizeof(Char) > 1 : conversion.length == PrintfLength::l;
}

template <class Char>
bool IsOfOtherWidth(const PrintfConversion& conversion) {
    return WantsWide<Char>(conversion) != (sizeof(Char) > 1);
}

template <class Char>
std::basic_string<Char> TextConverted(const PrintfConversion& conversion,
                                      const PrintfArgument<Char>& argument) {
    std::basic_string<Char> text(argument.text);
    if (argument.kind == PrintfArgument<Char>::Kind::other_text)
        Convert(argument.other_text, text);
    text.resize(
        std::min(text.size(), static_cast<std::size_t>(conversion.precision.value_or(kPrintfBuffer))));
    return PaddedText(conversion, std::move(text));
}

template <class Char>
std::basic_string<Char> CharacterConverted(const PrintfConversion& conversion, std::uint64_t character) {
    using OtherChar = typename PrintfArgument<Char>::OtherChar;
    std::basic_string<Char> text(1, static_cast<Char>(character));
    if (IsOfOtherWidth<Char>(conversion))
        Convert(std::basic_string<OtherChar>(1, static_cast<OtherChar>(character)), text);
    return PaddedText(conversion, std::move(text));
}

template <class Char>
std::basic_string<Char> PointerConverted(PrintfConversion conversion, const void* pointer) {
    constexpr std::string_view kNull = "(nil)";
    if (!pointer)
        return PaddedText(conversion, std::basic_string<Char>(kNull.begin(), kNull.end()));
    conversion.letter = 'x';
    conversion.alternate = true;
    const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(pointer));
    return PaddedNumber<Char>(conversion, IntegerText(conversion, address, 64), conversion.zeros);
}

// The text of one conversion, or nothing if the argument is not of its kind.
template <class Char>
std::optional<std::basic_string<Char>> Converted(const PrintfConversion& conversion,
                                                 const PrintfArgument<Char>& argument) {
    using Kind = typename PrintfArgument<Char>::Kind;
    const char letter = conversion.letter;
    const Kind kind = argument.kind;
    if (letter == 's' && kind == (IsOfOtherWidth<Char>(conversion) ? Kind::other_text : Kind::text))
        return TextConverted(conversion, argument);
    if (letter == 'c' && kind == Kind::integer)
        return CharacterConverted<Char>(conversion, argument.integer);
    if (letter == 'p' && (kind == Kind::pointer || argument.pointer))
        return PointerConverted<Char>(conversion, argument.pointer);
    if (IsOneOf(letter, "diuxXo") && kind == Kind::integer)
        return PaddedNumber<Char>(conversion, IntegerText(conversion, argument.integer, argument.bits),
                                  conversion.zeros && !conversion.precision);
    if (IsOneOf(letter, "eEfFgGaA") && kind == Kind::number)
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
            ConversionReader<Char> reader(rest.substr(1), arguments);
            const std::optional<PrintfConversion> conversion = reader.Read();
            const std::span<const PrintfArgument<Char>> left = reader.arguments_left();
            const std::size_t length = rest.size() - reader.length_left();
            std::optional<std::basic_string<Char>> text;
            if (conversion && !left.empty())
                text = Converted(*conversion, left.front());
            if (text)
                arguments = left.subspan(1);
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
