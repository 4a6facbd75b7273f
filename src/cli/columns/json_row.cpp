#include "cli/columns/json_row.h"

#include "cli/columns/number_cell.h"

#include <algorithm>

namespace metrify {

namespace {

bool is_continuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// The length of the character at the start of the text, or 0 if it is no UTF-8.
std::size_t utf8_length(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length ||
        !std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length), is_continuation))
        return 0;
    const auto second = static_cast<unsigned char>(text[1]);
    const bool is_overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool is_no_character = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
    return is_overlong || is_no_character ? 0 : length;
}

bool is_plain(char c) {
    return c >= ' ' && c <= '~' && c != '"' && c != '\\';
}

void append_escaped(std::string& out, char c) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(c);
    out += "\\u00";
    out += digits[code >> 4U];
    out += digits[code & 0xFU];
}

} // namespace

void append_json_string(std::string& out, std::string_view text) {
    out += '"';
    for (;;) {
        const auto special = std::find_if_not(text.begin(), text.end(), is_plain);
        out.append(text.begin(), special);
        text.remove_prefix(static_cast<std::size_t>(special - text.begin()));
        if (text.empty())
            break;
        const std::size_t length = utf8_length(text);
        if (length == 0)
            out += "\xEF\xBF\xBD";
        else if (static_cast<unsigned char>(text[0]) < 0x20)
            append_escaped(out, text[0]);
        else if (text[0] == '"' || text[0] == '\\')
            out.append(1, '\\').append(1, text[0]);
        else
            out.append(text.substr(0, length));
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    out += '"';
}

std::vector<std::string> json_keys(const std::vector<std::string>& names) {
    std::vector<std::string> keys(names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        append_json_string(keys[i], names[i].empty() ? std::to_string(i + 1) : names[i]);
    return keys;
}

json_row::json_row(std::string& out, const std::vector<std::string>& keys) : out_(out), keys_(keys) {
    out_ += keys_.empty() ? '[' : '{';
}

void json_row::begin_value() {
    if (count_ > 0)
        out_ += ',';
    if (count_ < keys_.size())
        out_.append(keys_[count_]).append(1, ':');
    else if (!keys_.empty())
        out_.append(1, '"').append(std::to_string(count_ + 1)).append("\":");
    ++count_;
}

void json_row::add_number(double value) {
    begin_value();
    append_number_cell(out_, {}, value);
}

void json_row::add_text(std::string_view text) {
    begin_value();
    append_json_string(out_, text);
}

void json_row::add_null() {
    begin_value();
    out_ += "null";
}

void json_row::finish() {
    out_ += keys_.empty() ? "]\n" : "}\n";
}

} // namespace metrify
