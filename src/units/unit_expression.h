#pragma once

// Unit expressions such as `kg m / s^2`, `ft*lbf`, `m^(1/2)` or `degC`.
//
//   expression := factor { [ "*" | "/" ] factor }
//   factor     := name [ "^" exponent ] | "(" expression ")"
//   exponent   := number | "(" { exponent } ")" | "*" exponent | "/" exponent
//
// Whatever stands behind a slash is in the denominator, with "*" or without; only parentheses end it. A text
// that doesn't go on as a unit is no error: the expression ends there.

#include "base/cursor.h"
#include "units/dim_value.h"

namespace metrify {

enum class unit_fault {
    none,
    nesting, // too deep, which is an error of the whole line
    other,
};

/// Reads a unit expression at the cursor into out. An empty text is one, with the factor 1 and no exponents.
///
/// True if it is a unit expression: the cursor is where it ends. Real errors are left in err, which may hold
/// a text with either result: if some units were read before the error they stand, and the result is true.
bool parse_unit_expression(cursor& expptr, unit_scale& out, text_str*& err);
/// Also reports what kind of error is in err.
bool parse_unit_expression(cursor& expptr, unit_scale& out, text_str*& err, unit_fault& fault);

} // namespace metrify
