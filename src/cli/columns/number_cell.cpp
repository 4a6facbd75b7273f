#include "cli/columns/number_cell.h"

#include <array>
#include <charconv>
#include <cmath>

namespace metrify {

namespace {

bool is_quoted(std::string_view cell) {
    return cell.size() > 1 && cell.front() == '"' && cell.back() == '"';
}

std::string_view without_blanks(std::string_view text) {
    constexpr std::string_view blanks = " \t";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

} // namespace

bool read_number_cell(std::string_view cell, double& value) {
    std::string_view text = without_blanks(is_quoted(cell) ? cell.substr(1, cell.size() - 2) : cell);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    const char* const end = text.data() + text.size();
    const auto [after, status] = std::from_chars(text.data(), end, value);
    return status == std::errc() && after == end && std::isfinite(value);
}

void append_number_cell(std::string& row, std::string_view cell, double value) {
    std::array<char, 32> digits; // the longest number has 24 characters
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    const bool quoted = is_quoted(cell);
    if (quoted)
        row += '"';
    row.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
    if (quoted)
        row += '"';
}

} // namespace metrify
