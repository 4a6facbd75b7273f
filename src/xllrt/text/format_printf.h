#pragma once

// printf formats for narrow and for wide text, with the same result on every platform and in every locale.

#include "xllrt/text/string_formatter.h"

#include <array>
#include <concepts>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace metrify {

/// A formatted text has fewer characters than this; the rest is cut.
inline constexpr std::size_t kPrintfBuffer = 2048;

/// One argument: a text of either width, an integer, a number or a pointer.
template <class Char>
class PrintfArgument {
  public:
    enum class Kind { text, other_text, integer, number, pointer };
    using OtherChar = std::conditional_t<std::is_same_v<Char, char>, char16_t, char>;

    template <std::integral Integer>
    PrintfArgument(Integer value)
        : kind(Kind::integer), bits(std::numeric_limits<std::make_unsigned_t<Promoted<Integer>>>::digits),
          integer(static_cast<std::uint64_t>(value)) {}
    PrintfArgument(std::floating_point auto value) : kind(Kind::number), number(static_cast<double>(value)) {}
    PrintfArgument(psl::TextArgument<Char> value) : kind(Kind::text), text(value.view()) {}
    PrintfArgument(const Char* value) : kind(Kind::text), text(View(value)), pointer(value) {}
    PrintfArgument(const std::basic_string<Char>& value) : kind(Kind::text), text(value) {}
    PrintfArgument(const OtherChar* value)
        : kind(Kind::other_text), other_text(View(value)), pointer(value) {}
    PrintfArgument(const std::basic_string<OtherChar>& value) : kind(Kind::other_text), other_text(value) {}
    PrintfArgument(const void* value) : kind(Kind::pointer), pointer(value) {}

    Kind kind;
    int bits = 0;              ///< of the integer's type after promotion
    std::uint64_t integer = 0; ///< sign-extended
    double number = 0.0;
    std::basic_string_view<Char> text;
    std::basic_string_view<OtherChar> other_text;
    const void* pointer = nullptr; ///< also of a text passed as a pointer

  private:
    template <class Integer>
    using Promoted = decltype(+Integer{});

    template <class Any>
    static std::basic_string_view<Any> View(const Any* value) {
        return psl::TextArgument<Any>(value).view();
    }
};

/// Formats as printf does, with flags, width, precision, stars and lengths. The conversion n, which writes no
/// text, is not supported.
///
/// - An unknown conversion, or one without an argument of its kind, is copied unchanged, and the argument is
///   left for the next one.
/// - s and c take texts and characters of the format's width, ls and lc wide ones, hs and hc narrow ones. A
///   null pointer is the empty text.
/// - d, i, u, x and o take integers of any type. hh and h take the lowest 8 and 16 bits; l, z, t and no
///   length take all bits of the argument's type.
/// - p writes "0x" and hexadecimal digits, or "(nil)".
template <class Char>
void FormatPrintfList(std::basic_string<Char>& out, const Char* format,
                      std::span<const PrintfArgument<Char>> arguments);

/// As `FormatPrintfList`, with the arguments as separate parameters.
template <class Char, class... Arguments>
void FormatPrintf(std::basic_string<Char>& out, const Char* format, const Arguments&... arguments) {
    const std::array<PrintfArgument<Char>, sizeof...(Arguments)> list{PrintfArgument<Char>(arguments)...};
    FormatPrintfList<Char>(out, format, list);
}

} // namespace metrify
