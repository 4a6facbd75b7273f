#include "cli/columns/csv_row.h"

#include <algorithm>

namespace metrify {

namespace {

constexpr char quote = '"';

// The position of the quote that closes a cell, or npos.
std::size_t closing_quote(std::string_view text, std::size_t opening) {
    for (std::size_t at = opening + 1; at < text.size(); ++at) {
        if (text[at] != quote)
            continue;
        if (at + 1 == text.size() || text[at + 1] != quote)
            return at;
        ++at;
    }
    return std::string_view::npos;
}

} // namespace

std::size_t csv_row::read(std::string_view text, char delimiter, bool is_complete) {
    cells.clear();
    has_open_quote = false;
    std::size_t begin = 0;
    for (;;) {
        std::size_t at = begin;
        if (at < text.size() && text[at] == quote) {
            at = closing_quote(text, at);
            has_open_quote = at == std::string_view::npos;
            at = has_open_quote ? text.size() : at + 1;
        }
        while (at < text.size() && text[at] != delimiter && text[at] != '\n')
            ++at;
        if (at == text.size()) {
            if (!is_complete)
                return 0;
            cells.push_back(text.substr(begin));
            line_end = text.substr(at);
            return at;
        }
        if (text[at] == delimiter) {
            cells.push_back(text.substr(begin, at - begin));
            begin = at + 1;
            continue;
        }
        const bool is_pair = at > begin && text[at - 1] == '\r';
        const std::size_t end = is_pair ? at - 1 : at;
        cells.push_back(text.substr(begin, end - begin));
        line_end = text.substr(end, at + 1 - end);
        return at + 1;
    }
}

std::string plain_cell(std::string_view cell) {
    if (cell.empty() || cell[0] != quote)
        return std::string(cell);
    std::string plain;
    const std::size_t end = std::min(closing_quote(cell, 0), cell.size());
    for (std::size_t at = 1; at < end; ++at) {
        plain += cell[at];
        if (cell[at] == quote)
            ++at;
    }
    return plain.append(cell.substr(std::min(end + 1, cell.size())));
}

} // namespace metrify
