#include "cli/columns/column_choice.h"

#include "cli/columns/number_cell.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace metrify {

namespace {

// The number that is the whole text, or nothing. A number that is too large counts as the largest one.
std::optional<std::size_t> whole_number(std::string_view text) {
    std::size_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [after, status] = std::from_chars(text.data(), end, number);
    if (after != end || status == std::errc::invalid_argument)
        return std::nullopt;
    return status == std::errc() ? number : std::numeric_limits<std::size_t>::max();
}

bool is_within(std::optional<std::size_t> number, std::size_t width) {
    return number && *number >= 1 && *number <= width;
}

bool is_named(const csv_row& first, const std::string& name) {
    return std::any_of(
        first.cells.begin(), first.cells.end(),
        [&](std::string_view cell) { return plain_cell(cell) == name; });
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
    const std::size_t width = first.cells.size();
    bool has_number = false;
    for (const std::string& column : wanted_) {
        const std::optional<std::size_t> number = whole_number(column);
        if (!number || (!is_within(number, width) && is_named(first, column)))
            return true;
        has_number =
            has_number || (is_within(number, width) && read_number_cell(first.cells[*number - 1], ignored));
    }
    return !has_number;
}

std::string column_choice::missing(const std::string& wanted, std::size_t width) const {
    const std::optional<std::size_t> number = whole_number(wanted);
    if (!has_header_ && !number)
        return "column '" + wanted + "' is given by name, but there is no row of names";
    std::string reason = "there is no column '" + wanted + "'; ";
    if (number == 0U)
        reason += "they are counted from 1; ";
    if (!has_header_)
        return reason + "the first row has " + std::to_string(width) + (width == 1 ? " cell" : " cells");
    reason += "the columns are";
    for (const std::string& known : names_)
        reason += " '" + known + "'";
    return reason;
}

// A number within the row is the number of a column, even if another one has it as its name.
bool column_choice::find(const std::string& wanted, std::size_t width, std::string& reason) {
    const auto name = std::find(names_.begin(), names_.end(), wanted);
    const auto named = static_cast<std::size_t>(name - names_.begin());
    const std::optional<std::size_t> number = whole_number(wanted);
    if (!is_within(number, width) && name == names_.end()) {
        reason = missing(wanted, width);
        return false;
    }
    indexes_.push_back(is_within(number, width) ? *number - 1 : named);
    if (name != names_.end() && named != indexes_.back())
        note_ = "column " + wanted + " is '" + label(indexes_.back()) + "'; the one with the name '" +
                wanted + "' is column " + std::to_string(named + 1);
    return true;
}

// Numbers that are more likely the names of columns.
bool column_choice::are_years(const csv_row& first) const {
    constexpr double first_year = 1800.0;
    constexpr double last_year = 2199.0;
    return first.cells.size() > 1 && std::all_of(indexes_.begin(), indexes_.end(), [&](std::size_t index) {
               double year = 0.0;
               return read_number_cell(first.cells[index], year) && year == std::floor(year) &&
                      year >= first_year && year <= last_year;
           });
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
        if (!find(column, first.cells.size(), reason))
            return false;
    std::sort(indexes_.begin(), indexes_.end());
    indexes_.erase(std::unique(indexes_.begin(), indexes_.end()), indexes_.end());
    if (!header && !has_header_ && are_years(first))
        note_ = "the first row is taken for numbers; if " + plain_cell(first.cells[indexes_.front()]) +
                " is the name of a column, use --header";
    return true;
}

std::string column_choice::label(std::size_t index) const {
    return index < names_.size() && !names_[index].empty() ? names_[index] : std::to_string(index + 1);
}

} // namespace metrify
