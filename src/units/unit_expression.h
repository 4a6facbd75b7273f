#pragma once

// Unit expressions such as `kg m / s^2`, `ft*lbf`, `m^(1/2)` or `degC`.
//
//   expression := factor { [ "*" | "/" ] factor }
//   factor     := name [ "^" exponent ] | "(" expression ")"
//   exponent   := number | "(" { exponent } ")" | "*" exponent | "/" exponent
//
// Every unit after a slash is in the denominator, with "*" or without; only parentheses end it. If the text
// does not continue with a unit, the expression ends there, without an error.

#include "base/cursor.h"
#include "units/dim_value.h"

namespace metrify {

enum class unit_fault {
    none,
    nesting, // too deep, which is an error of the whole line
    other,
};

/// Reads a unit expression at the cursor into out. An empty text is a unit expression with the factor 1 and
/// no exponents.
///
/// True if it is a unit expression; the cursor is at its end. Errors are left in err with either result: if
/// some units were read before the error, they are kept and the result is true.
bool parse_unit_expression(cursor& expptr, unit_scale& out, text_str*& err);
/// Also reports what kind of error is in err.
bool parse_unit_expression(cursor& expptr, unit_scale& out, text_str*& err, unit_fault& fault);

} // namespace metrify
