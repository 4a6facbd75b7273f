#pragma once

// Unit texts from exponents, and the output of a value in a unit.
//
// A unit text depends on the exponents only. The number is converted by parsing the text, so every text
// written here must read back to the same exponents.

#include "base/cursor.h"
#include "units/dim_value.h"
#include "units/unit_system.h"

#include <string_view>

namespace metrify {

/// Appends `name` , `name^2` or `name^0.5` and a blank; the sign of the exponent is not written. False, with
/// nothing appended, if the text were longer than 256 characters.
bool append_one_exponentiated_unit_to_a_string(std::string_view name, double exponent, text_str*& buffer);

/// Appends the text of exponents in a system, e.g. `kg m / s^2`; nothing for no exponents. There is no
/// trailing blank.
void render_units(unit_system system, const exponents& dim, text_str*& out, text_str*& err);

/// Appends the text of a value's units: the first exception with the same exponents, or the current system's
/// text.
void unit_text(text_str*& out, const dim_value& value, text_str*& err);
/// The same, but `Dimensionless` for a value without exponents that no exception matches.
void unit_text_for_message(text_str*& out, const dim_value& value, text_str*& err);

// Output. Appends ` = `, the number or the vector, a blank and the unit text. Unless no_check is set the
// value must agree loosely with the unit; a failure leaves its message in err.

void print_value_in_default_units(text_str*& out, const dim_value& value, text_str*& err, bool no_check);
/// Ignores exceptions.
void print_value_in_system(unit_system system, text_str*& out, const dim_value& value, text_str*& err,
                           bool no_check);
/// Reads the unit text at the cursor and prints it unchanged, up to a comment. True if the value was printed.
bool print_value_with_requested_units(text_str*& out, const dim_value& value, cursor& expptr, text_str*& err,
                                      bool no_check);

} // namespace metrify
