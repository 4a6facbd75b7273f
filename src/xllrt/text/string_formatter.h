#pragma once

// Texts with positional placeholders, `{0}`, `{1}` and so on. A doubled brace stands for itself.
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

/// What a template with a misplaced brace or a bad index throws.
class StringFormatterError : public std::runtime_error {
  public:
    StringFormatterError();
};

/// One placeholder of a cleaned template.
struct Placeholder {
    std::size_t position; ///< where it stands in the cleaned template
    std::size_t length;   ///< of its text, braces included
    int index;            ///< of the argument it stands for
};

// Codes of a failure. All are negative.
inline constexpr int kUnmatchedBrace = -2;
inline constexpr int kBadIndex = -3;
inline constexpr int kIndexTooLarge = -4;
inline constexpr int kNoTemplate = -6;

/// The largest index a placeholder may have.
inline constexpr int kMaxIndex = 65535;

/// An argument of a template. A null pointer stands for the empty text.
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

/// Finds the placeholders of a template. `cleaned` becomes the template with each doubled brace made single
/// and the placeholders in place, `placeholders` their list in the order of occurrence. Gives 0, or the code
/// of the failure; the lists then hold what was read so far.
template <class Char>
int ParseFormat(std::basic_string_view<Char> format, std::vector<Placeholder>& placeholders,
                std::basic_string<Char>& cleaned);

/// Puts the arguments in the places of a template's placeholders. An argument's own braces mean nothing, and
/// one that is named but not given stands for the empty text.
/// Gives the length of the result plus one, or the code of the failure, which leaves `out` as it is.
template <class Char>
std::ptrdiff_t FormatList(std::basic_string<Char>& out, const Char* format,
                          std::span<const TextArgument<Char>> arguments);

/// As `FormatList`, but a failure empties `out` and throws a `StringFormatterError`.
template <class Char>
void FormatOrThrow(std::basic_string<Char>& out, const Char* format,
                   std::span<const TextArgument<Char>> arguments);

/// Formats with the arguments given one by one: pointers, which may be null, strings or views.
template <class Char, class... Arguments>
void Format(std::basic_string<Char>& out, const Char* format, const Arguments&... arguments) {
    const std::array<TextArgument<Char>, sizeof...(Arguments)> list{TextArgument<Char>(arguments)...};
    FormatOrThrow<Char>(out, format, list);
}

} // namespace psl
