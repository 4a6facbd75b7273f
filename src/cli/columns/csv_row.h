#pragma once

// The cells of one row of a text with separated columns. In quotes a cell can contain the delimiter, line
// breaks, and quotes written twice.

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace metrify {

struct csv_row {
    std::vector<std::string_view> cells; ///< as they are in the text, quotes included
    std::string_view line_end;           ///< LF, CR LF, or nothing at the end of the text
    bool has_open_quote = false;         ///< the text ends in the quotes of the last cell

    /// Reads the row at the start of the text. Returns its length with the line end, or 0 if the text ends
    /// before the row does. If the text is complete, its end is the end of its last row.
    std::size_t read(std::string_view text, char delimiter, bool is_complete);
};

/// The text that a cell means: without its quotes.
std::string plain_cell(std::string_view cell);

} // namespace metrify
