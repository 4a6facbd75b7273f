#pragma once

// The conversion of the worksheet function. It builds and runs a line of the language and extracts the answer
// from the listing. The two unit texts are not inspected: the language handles whatever they contain.

#include "language/driver.h"

#include <string>
#include <string_view>

namespace metrify {

enum class conversion_outcome {
    converted, // number and text are the two cells
    error,     // text is the message, the second cell is empty
    unmarked,  // the listing has neither a result nor a message, as the units contain a line break
};

/// The texts point into the listing.
struct conversion {
    listing answer;
    conversion_outcome outcome = conversion_outcome::unmarked;
    double number = 0.0;
    std::string_view text = {};
};

/// Converts val, rounded to six significant digits, from one unit expression to another.
conversion convert_units(double val, std::string_view in_units, std::string_view out_units);

/// The same with further units; see language/unit_definitions.h.
conversion convert_units(double val, std::string_view in_units, std::string_view out_units,
                         const std::string& unit_definitions);

} // namespace metrify
