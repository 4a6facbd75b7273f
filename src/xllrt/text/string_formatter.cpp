#include "xllrt/text/string_formatter.h"

#include <algorithm>

namespace psl {

StringFormatterError::StringFormatterError() : std::runtime_error("Error in string format") {}

namespace {

// The index between two braces, or the code of a failure.
template <class Char>
int ReadIndex(std::basic_string_view<Char> text) {
    const auto is_digit = [](Char c) { return c >= Char('0') && c <= Char('9'); };
    if (text.empty() || !std::all_of(text.begin(), text.end(), is_digit))
        return kBadIndex;
    int index = 0;
    for (const Char c : text) {
        index = index * 10 + (c - Char('0'));
        if (index > kMaxIndex)
            return kIndexTooLarge;
    }
    return index;
}

template <class Char>
std::basic_string_view<Char> ArgumentOf(const Placeholder& placeholder,
                                        std::span<const TextArgument<Char>> arguments) {
    const auto index = static_cast<std::size_t>(placeholder.index);
    return index < arguments.size() ? arguments[index].view() : std::basic_string_view<Char>{};
}

template <class Char>
std::basic_string<Char> Fill(std::basic_string_view<Char> cleaned,
                             const std::vector<Placeholder>& placeholders,
                             std::span<const TextArgument<Char>> arguments) {
    std::size_t length = cleaned.size();
    for (const Placeholder& placeholder : placeholders)
        length += ArgumentOf(placeholder, arguments).size() - placeholder.length;
    std::basic_string<Char> filled;
    filled.reserve(length);
    std::size_t at = 0;
    for (const Placeholder& placeholder : placeholders) {
        filled += cleaned.substr(at, placeholder.position - at);
        filled += ArgumentOf(placeholder, arguments);
        at = placeholder.position + placeholder.length;
    }
    filled += cleaned.substr(at);
    return filled;
}

} // namespace

template <class Char>
int ParseFormat(std::basic_string_view<Char> format, std::vector<Placeholder>& placeholders,
                std::basic_string<Char>& cleaned) {
    constexpr Char open = '{';
    constexpr Char close = '}';
    constexpr Char braces[] = {open, close, 0};
    placeholders.clear();
    cleaned.clear();
    std::size_t at = 0;
    while (at < format.size()) {
        const Char c = format[at];
        if (c != open && c != close) {
            cleaned += c;
            ++at;
        } else if (at + 1 < format.size() && format[at + 1] == c) {
            cleaned += c;
            at += 2;
        } else if (c == close) {
            return kUnmatchedBrace;
        } else {
            const std::size_t end = format.find_first_of(braces, at + 1);
            if (end == format.npos || format[end] != close)
                return kUnmatchedBrace;
            const int index = ReadIndex(format.substr(at + 1, end - at - 1));
            if (index < 0)
                return index;
            const std::size_t length = end + 1 - at;
            placeholders.push_back({cleaned.size(), length, index});
            cleaned += format.substr(at, length);
            at = end + 1;
        }
    }
    return 0;
}

template <class Char>
std::ptrdiff_t FormatList(std::basic_string<Char>& out, const Char* format,
                          std::span<const TextArgument<Char>> arguments) {
    if (!format)
        return kNoTemplate;
    std::vector<Placeholder> placeholders;
    std::basic_string<Char> cleaned;
    if (const int code = ParseFormat<Char>(format, placeholders, cleaned); code < 0)
        return code;
    // The old text is replaced last: it may be one of the arguments.
    out = Fill<Char>(cleaned, placeholders, arguments);
    return static_cast<std::ptrdiff_t>(out.size()) + 1;
}

template <class Char>
void FormatOrThrow(std::basic_string<Char>& out, const Char* format,
                   std::span<const TextArgument<Char>> arguments) {
    if (FormatList<Char>(out, format, arguments) < 0) {
        out.clear();
        throw StringFormatterError();
    }
}

template int ParseFormat(std::string_view, std::vector<Placeholder>&, std::string&);
template int ParseFormat(std::u16string_view, std::vector<Placeholder>&, std::u16string&);
template std::ptrdiff_t FormatList(std::string&, const char*, std::span<const TextArgument<char>>);
template std::ptrdiff_t FormatList(std::u16string&, const char16_t*, std::span<const TextArgument<char16_t>>);
template void FormatOrThrow(std::string&, const char*, std::span<const TextArgument<char>>);
template void FormatOrThrow(std::u16string&, const char16_t*, std::span<const TextArgument<char16_t>>);

} // namespace psl
