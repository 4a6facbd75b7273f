#pragma once

// Texts with positional placeholders, `{0}`, `{1}` and so on. A doubled brace is one brace.
//
// Everything exists for narrow text (char) and for wide text (char16_t).

#include <array>
#include <cstddef>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace psl {

/// Thrown for a template with a misplaced brace or a bad index.
class StringFormatterError : public std::runtime_error {
  public:
    StringFormatterError();
};

/// One placeholder of a cleaned template.
struct Placeholder {
    std::size_t position; ///< in the cleaned template
    std::size_t length;   ///< of its text, braces included
    int index;            ///< of the argument that replaces it
};

// Codes of a failure. All are negative.
inline constexpr int kUnmatchedBrace = -2;
inline constexpr int kBadIndex = -3;
inline constexpr int kIndexTooLarge = -4;
inline constexpr int kNoTemplate = -6;

/// The largest index a placeholder may have.
inline constexpr int kMaxIndex = 65535;

/// An argument of a template. A null pointer is the empty text.
template <class Char>
class TextArgument {
  public:
    TextArgument() = default;
    TextArgument(const Char* text) : text_(text ? text : std::basic_string_view<Char>{}) {}
    TextArgument(std::basic_string_view<Char> text) : text_(text) {}
    TextArgument(const std::basic_string<Char>& text) : text_(text) {}

    std::basic_string_view<Char> view() const { return text_; }

  private:
    std::basic_string_view<Char> text_;
};

/// Finds the placeholders of a template. `cleaned` becomes the template with single braces for doubled
/// ones and with its placeholders, `placeholders` their list in order of occurrence. Returns 0, or the code
/// of the failure; both outputs then hold what was read before it.
template <class Char>
int ParseFormat(std::basic_string_view<Char> format, std::vector<Placeholder>& placeholders,
                std::basic_string<Char>& cleaned);

/// Replaces a template's placeholders by the arguments. Braces in an argument have no meaning, and a missing
/// argument is the empty text.
/// Returns the length of the result plus one, or the code of the failure, which leaves `out` unchanged.
template <class Char>
std::ptrdiff_t FormatList(std::basic_string<Char>& out, const Char* format,
                          std::span<const TextArgument<Char>> arguments);

/// As `FormatList`, but a failure empties `out` and throws a `StringFormatterError`.
template <class Char>
void FormatOrThrow(std::basic_string<Char>& out, const Char* format,
                   std::span<const TextArgument<Char>> arguments);

/// Formats with the arguments as separate parameters: pointers, which may be null, strings or views.
template <class Char, class... Arguments>
void Format(std::basic_string<Char>& out, const Char* format, const Arguments&... arguments) {
    const std::array<TextArgument<Char>, sizeof...(Arguments)> list{TextArgument<Char>(arguments)...};
    FormatOrThrow<Char>(out, format, list);
}

} // namespace psl
