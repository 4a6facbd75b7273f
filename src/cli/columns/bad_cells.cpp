#include "cli/columns/bad_cells.h"

#include <ostream>

namespace metrify {

namespace {

std::string about(bad_cells::kind what, std::string_view cell) {
    constexpr std::size_t longest = 40;
    switch (what) {
    case bad_cells::kind::empty:
        return "empty";
    case bad_cells::kind::missing:
        return "missing";
    case bad_cells::kind::too_large:
        return std::string(cell).append(" is too large for the result");
    case bad_cells::kind::open_quote:
        return "a quote has no end";
    case bad_cells::kind::more_cells:
        return "more cells than the first row";
    case bad_cells::kind::no_number:
        break;
    }
    if (cell.size() > longest)
        return std::string(cell.substr(0, longest)).append("... is no number");
    return std::string(cell).append(" is no number");
}

} // namespace

void bad_cells::add(kind what, std::uint64_t row, std::string_view column, std::string_view cell) {
    if (++count_ > most_shown)
        return;
    const std::string place = column.empty() ? "" : ", column " + std::string(column);
    shown_.push_back("row " + std::to_string(row) + place + ": " + about(what, cell));
}

void bad_cells::report(std::ostream& err) const {
    err << "metrify: " << count_ << (count_ == 1 ? " cell is" : " cells are") << " not converted\n";
    for (const std::string& cell : shown_)
        err << "  " << cell << '\n';
    if (count_ > shown_.size())
        err << "  and " << count_ - shown_.size() << " more\n";
}

} // namespace metrify
