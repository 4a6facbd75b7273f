#pragma once

// The cells that could not be converted.

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace metrify {

class bad_cells {
  public:
    enum class kind { empty, missing, no_number, too_large, open_quote, more_cells };

    /// Rows are counted from 1. Without a column it is about the whole row.
    void add(kind what, std::uint64_t row, std::string_view column, std::string_view cell);

    bool any() const { return count_ > 0; }

    /// Writes the number of cells, and where the first ones are.
    void report(std::ostream& err) const;

  private:
    static constexpr std::size_t most_shown = 10;

    std::uint64_t count_ = 0;
    std::vector<std::string> shown_;
};

} // namespace metrify
