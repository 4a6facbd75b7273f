#pragma once

// One conversion from cell to cell: a line of the language is built, run, and the answer picked out of its
// listing by fixed marks. Everything that the two unit texts may hold is the language's affair.

#include "language/driver.h"

#include <string_view>

namespace metrify {

enum class conversion_outcome {
    converted, // number and text are the two cells
    error,     // text is the message, the second cell is empty
    unmarked,  // the listing holds none of the marks: an error of the caller's side
};

/// The texts point into the listing.
struct conversion {
    listing answer;
    conversion_outcome outcome = conversion_outcome::unmarked;
    double number = 0.0;
    std::string_view text = {};
};

/// Converts val, of which six significant digits count, from one unit expression to another.
conversion convert_units(double val, std::string_view in_units, std::string_view out_units);

} // namespace metrify
