// Arbitrary templates with arbitrary arguments: the result is compared with a direct implementation of the
// rules, in both widths.
//
// Input: the first byte is the number of arguments; they and the template are separated by zero bytes.

#include "xllrt/text/string_formatter.h"

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

constexpr unsigned kMostArguments = 4;

Texts Split(std::string_view text) {
    Texts parts(1);
    for (const char c : text)
        if (c == '\0')
            parts.emplace_back();
        else
            parts.back() += c;
    return parts;
}

// The index between two braces, if it is one.
std::optional<std::size_t> IndexOf(std::string_view digits) {
    if (digits.empty() || digits.find_first_not_of("0123456789") != digits.npos)
        return std::nullopt;
    std::size_t index = 0;
    for (const char digit : digits) {
        index = index * 10 + static_cast<std::size_t>(digit - '0');
        if (index > psl::kMaxIndex)
            return std::nullopt;
    }
    return index;
}

// The formatted text; nothing if the template is invalid.
std::optional<std::string> Model(std::string_view format, const Texts& arguments) {
    std::string out;
    while (!format.empty()) {
        const char c = format.front();
        format.remove_prefix(1);
        if (c != '{' && c != '}') {
            out += c;
        } else if (format.starts_with(c)) {
            out += c;
            format.remove_prefix(1);
        } else {
            const std::size_t end = format.find_first_of("{}");
            if (c == '}' || end == format.npos || format[end] == '{')
                return std::nullopt;
            const std::optional<std::size_t> index = IndexOf(format.substr(0, end));
            if (!index)
                return std::nullopt;
            out += *index < arguments.size() ? arguments[*index] : std::string();
            format.remove_prefix(end + 1);
        }
    }
    return out;
}

template <class Char>
std::basic_string<Char> Widened(const std::string& text) {
    std::basic_string<Char> wide;
    for (const char c : text)
        wide += static_cast<Char>(static_cast<unsigned char>(c));
    return wide;
}

template <class Char>
void Check(const std::string& format, const Texts& arguments) {
    using Text = std::basic_string<Char>;
    std::vector<Text> kept;
    for (const std::string& argument : arguments)
        kept.push_back(Widened<Char>(argument));
    const std::vector<psl::TextArgument<Char>> list(kept.begin(), kept.end());
    const std::optional<std::string> expected = Model(format, arguments);
    Text out;
    bool has_thrown = false;
    try {
        psl::FormatOrThrow<Char>(out, Widened<Char>(format).c_str(), list);
    } catch (const psl::StringFormatterError&) {
        has_thrown = true;
    }
    if (has_thrown == expected.has_value() || out != Widened<Char>(expected.value_or("")))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    Texts parts = Split({reinterpret_cast<const char*>(data) + 1, size - 1});
    const std::string format = parts.front();
    parts.erase(parts.begin());
    parts.resize(data[0] % (kMostArguments + 1));
    Check<char>(format, parts);
    Check<char16_t>(format, parts);
    return 0;
}
