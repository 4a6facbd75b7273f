#include "xllrt/text/text_number.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <system_error>

namespace metrify {

namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

std::string_view SkipWhiteSpace(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
    return text;
}

// Removes a leading sign; true if it is a minus.
bool TakeSign(std::string_view& text) {
    const bool is_minus = text.starts_with('-');
    if (is_minus || text.starts_with('+'))
        text.remove_prefix(1);
    return is_minus;
}

// Removes a hexadecimal prefix. It must be followed by a digit or a point: the library's number readers would
// accept a sign, an infinity or a not-a-number after it as well.
bool TakeHexPrefix(std::string_view& text) {
    constexpr std::string_view kHexStart = "0123456789abcdefABCDEF.";
    const bool has_prefix = text.starts_with("0x") || text.starts_with("0X");
    if (!has_prefix || text.size() < 3 || kHexStart.find(text[2]) == kHexStart.npos)
        return false;
    text.remove_prefix(2);
    return true;
}

// Reads the number after an optional sign and removes its characters. The library's number readers accept no
// plus, and would accept a second minus.
template <class Value, class Reader>
bool TakeNumber(std::string_view& text, Value& value, Reader read) {
    std::string_view rest = text;
    const bool is_minus = TakeSign(rest);
    if (rest.starts_with('-'))
        return false;
    const std::from_chars_result end = read(rest, value);
    if (end.ec != std::errc{})
        return false;
    value = is_minus ? -value : value;
    text = {end.ptr, static_cast<std::size_t>(rest.data() + rest.size() - end.ptr)};
    return true;
}

template <class Value, class Reader>
bool ParseWhole(std::string_view text, Value& value, Reader read) {
    if (text.empty())
        return false;
    Value number{};
    std::string_view rest = SkipWhiteSpace(text);
    if (!rest.empty() && !(TakeNumber(rest, number, read) && SkipWhiteSpace(rest).empty()))
        return false;
    value = number;
    return true;
}

std::from_chars_result ReadHexDouble(std::string_view text, double& value) {
    const char* const begin = text.data();
    const std::from_chars_result end =
        std::from_chars(begin, begin + text.size(), value, std::chars_format::hex);
    // The library's reader accepts a minus after the plus of an exponent.
    const std::string_view taken(begin, static_cast<std::size_t>(end.ptr - begin));
    return taken.find("+-") == taken.npos ? end : std::from_chars_result{begin, std::errc::invalid_argument};
}

std::from_chars_result ReadDouble(std::string_view text, double& value) {
    return TakeHexPrefix(text) ? ReadHexDouble(text, value)
                               : std::from_chars(text.data(), text.data() + text.size(), value);
}

std::from_chars_result ReadInteger(std::string_view text, std::int64_t& value) {
    return std::from_chars(text.data(), text.data() + text.size(), value);
}

// Numbers are ASCII. Any other unit becomes a character that occurs in no number.
std::string ToAscii(std::u16string_view text) {
    std::string ascii(text.size(), '\0');
    std::transform(text.begin(), text.end(), ascii.begin(),
                   [](char16_t unit) { return unit < 0x80 ? static_cast<char>(unit) : '?'; });
    return ascii;
}

} // namespace

bool ParseNumber(std::string_view text, double& value) {
    return ParseWhole(text, value, ReadDouble);
}

bool ParseNumber(std::u16string_view text, double& value) {
    return ParseNumber(ToAscii(text), value);
}

bool ParseInteger(std::string_view text, std::int32_t& value) {
    std::int64_t number = 0;
    if (!ParseWhole(text, number, ReadInteger) || number < INT32_MIN || number > INT32_MAX)
        return false;
    value = static_cast<std::int32_t>(number);
    return true;
}

bool ParseInteger(std::u16string_view text, std::int32_t& value) {
    return ParseInteger(ToAscii(text), value);
}

} // namespace metrify
