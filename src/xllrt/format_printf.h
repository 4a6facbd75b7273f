#pragma once

// The texts that are written with percent signs: the same result on every platform and in every locale, for
// narrow text and for wide text.

#include "xllrt/string_formatter.h"

#include <array>
#include <concepts>
#include <limits>
#include <span>
#include <string>

namespace metrify {

/// A formatted text has fewer characters than this; what goes beyond is cut.
inline constexpr std::size_t kPrintfBuffer = 2048;

/// One argument: a text of the format's width, an integer or a number.
template <class Char>
class PrintfArgument {
  public:
    enum class Kind { text, integer, number };

    PrintfArgument(std::integral auto value)
        : kind(Kind::integer), negative(value < 0),
          bits(std::numeric_limits<std::make_unsigned_t<decltype(value)>>::digits),
          integer(static_cast<unsigned long long>(value)) {}
    PrintfArgument(double value) : kind(Kind::number), number(value) {}
    PrintfArgument(psl::TextArgument<Char> value) : kind(Kind::text), text(value.view()) {}
    PrintfArgument(const Char* value) : PrintfArgument(psl::TextArgument<Char>(value)) {}
    PrintfArgument(const std::basic_string<Char>& value) : PrintfArgument(psl::TextArgument<Char>(value)) {}

    Kind kind;
    bool negative = false;
    int bits = 0;                   ///< of the integer's own type
    unsigned long long integer = 0; ///< a negative one with its sign carried on
    double number = 0.0;
    std::basic_string_view<Char> text;
};

/// Formats as printf does: the conversions s, c, d, i, u, x, X, o, e, f, g and their capitals, with the flags
/// "-", "0", "+" and blank, a width and a precision. A conversion that is none of these, or that finds no
/// argument of its kind, stays as it stands.
template <class Char>
void FormatPrintfList(std::basic_string<Char>& out, const Char* format,
                      std::span<const PrintfArgument<Char>> arguments);

/// As `FormatPrintfList`, with the arguments one by one.
template <class Char, class... Arguments>
void FormatPrintf(std::basic_string<Char>& out, const Char* format, const Arguments&... arguments) {
    const std::array<PrintfArgument<Char>, sizeof...(Arguments)> list{PrintfArgument<Char>(arguments)...};
    FormatPrintfList<Char>(out, format, list);
}

} // namespace metrify
