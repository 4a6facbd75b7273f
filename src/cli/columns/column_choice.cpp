#include "cli/columns/column_choice.h"

#include "cli/columns/number_cell.h"

#include <algorithm>
#include <charconv>

namespace metrify {

namespace {

// The index of a column given by its number, or nothing if the text is no number.
std::optional<std::size_t> index_of_number(std::string_view text) {
    std::size_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [after, status] = std::from_chars(text.data(), end, number);
    if (status != std::errc() || after != end || number == 0)
        return std::nullopt;
    return number - 1;
}

} // namespace

column_choice::column_choice(std::string_view list) {
    csv_row row;
    if (!list.empty())
        row.read(list, ',', true);
    for (const std::string_view cell : row.cells)
        wanted_.push_back(plain_cell(cell));
}

bool column_choice::find_header(const csv_row& first, std::optional<bool> header) const {
    if (header)
        return *header;
    double ignored = 0.0;
    if (wanted_.empty())
        return !read_number_cell(first.cells[0], ignored);
    for (const std::string& column : wanted_) {
        const std::optional<std::size_t> index = index_of_number(column);
        if (!index)
            return true;
        if (*index < first.cells.size() && read_number_cell(first.cells[*index], ignored))
            return false;
    }
    return true;
}

bool column_choice::find(const std::string& wanted, std::string& reason) {
    if (const std::optional<std::size_t> index = index_of_number(wanted)) {
        indexes_.push_back(*index);
        return true;
    }
    const auto name = std::find(names_.begin(), names_.end(), wanted);
    if (name == names_.end()) {
        reason = has_header_ ? "there is no column '" + wanted + "'; the columns are"
                             : "column '" + wanted + "' is given by name, but there is no row of names";
        for (const std::string& known : names_)
            reason += " '" + known + "'";
        return false;
    }
    indexes_.push_back(static_cast<std::size_t>(name - names_.begin()));
    return true;
}

bool column_choice::resolve(const csv_row& first, std::optional<bool> header, std::string& reason) {
    has_header_ = find_header(first, header);
    if (has_header_)
        for (const std::string_view cell : first.cells)
            names_.push_back(plain_cell(cell));
    if (wanted_.empty() && first.cells.size() > 1) {
        reason = "there are " + std::to_string(first.cells.size()) + " columns; choose with --columns";
        return false;
    }
    if (wanted_.empty())
        indexes_.push_back(0);
    for (const std::string& column : wanted_)
        if (!find(column, reason))
            return false;
    std::sort(indexes_.begin(), indexes_.end());
    indexes_.erase(std::unique(indexes_.begin(), indexes_.end()), indexes_.end());
    return true;
}

std::string column_choice::label(std::size_t index) const {
    return index < names_.size() && !names_[index].empty() ? names_[index] : std::to_string(index + 1);
}

} // namespace metrify
