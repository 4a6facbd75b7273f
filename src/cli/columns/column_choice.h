#pragma once

// The columns that are converted.

#include "cli/columns/csv_row.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace metrify {

/// Chosen by a list such as `height,3`, whose cells are names, or numbers from 1 on. An empty list chooses
/// the only column of a text that has one.
class column_choice {
  public:
    explicit column_choice(std::string_view list);

    /// Finds the columns by the first row. Whether that row holds names is given, or found out: it does if a
    /// column is chosen by name, or if no chosen cell is a number. A number beyond the cells of the row can
    /// be a name, such as 2021. On failure returns false and sets the reason.
    bool resolve(const csv_row& first, std::optional<bool> header, std::string& reason);

    /// What could be meant otherwise; empty if nothing.
    const std::string& note() const { return note_; }

    bool has_header() const { return has_header_; }
    /// Indexes from 0 on, ascending.
    const std::vector<std::size_t>& indexes() const { return indexes_; }
    /// The column's name, or its number if it has none.
    std::string label(std::size_t index) const;
    const std::vector<std::string>& names() const { return names_; }

  private:
    bool find_header(const csv_row& first, std::optional<bool> header) const;
    bool find(const std::string& wanted, std::size_t width, std::string& reason);
    std::string missing(const std::string& wanted, std::size_t width) const;
    bool are_years(const csv_row& first) const;

    std::vector<std::string> wanted_;
    std::vector<std::string> names_; // of all columns; empty without a header
    std::vector<std::size_t> indexes_;
    std::string note_;
    bool has_header_ = false;
};

} // namespace metrify
