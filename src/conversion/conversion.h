#pragma once

// The conversion of the worksheet function. It is what a line of the language with the number and the two
// unit texts gives: the language handles whatever they contain. A conversion between plain units is computed
// without the line.

#include "language/driver.h"

#include <optional>
#include <string>
#include <string_view>

namespace metrify {

enum class conversion_outcome {
    converted, // number and text are the two cells
    error,     // text is the message, the second cell is empty
    unmarked,  // the listing has neither a result nor a message, as the units contain a line break
};

struct conversion {
    std::optional<listing> answer = {}; // none if no line was run
    conversion_outcome outcome = conversion_outcome::unmarked;
    double number = 0.0;
    std::string_view text = {}; // in the listing or, without one, valid until the thread's next conversion
};

/// Converts val, rounded to six significant digits, from one unit expression to another.
conversion convert_units(double val, std::string_view in_units, std::string_view out_units);

/// The same between plain units, which runs no line. False if the units are not plain or not compatible, if
/// the value is not finite, or if an earlier run of the calculator in use left a report; the cells are
/// unchanged then.
bool convert_plain_units(double val, std::string_view in_units, std::string_view out_units,
                         conversion& cells);

/// The same for any units, always by running the line.
conversion convert_units_by_line(double val, std::string_view in_units, std::string_view out_units);

/// The same with further units; see language/unit_definitions.h.
conversion convert_units_by_line(double val, std::string_view in_units, std::string_view out_units,
                                 const std::string& unit_definitions);

} // namespace metrify
