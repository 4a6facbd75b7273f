#pragma once

// Exponents as a unit text, and the output of a value in a unit.
//
// Rendering works on the exponents alone. The number is converted by handing the text to the unit expression
// parser, so any text written here must read back to the same exponents.

#include "base/cursor.h"
#include "units/dim_value.h"
#include "units/unit_system.h"

#include <string_view>

namespace metrify {

/// Appends `name` , `name^2` or `name^0.5` and a blank; the sign of the exponent doesn't show. False, with
/// nothing appended, if that would be longer than 256 characters.
bool append_one_exponentiated_unit_to_a_string(std::string_view name, double exponent, text_str*& buffer);

/// Appends the text of exponents in a system, e.g. `kg m / s^2`; nothing for none. Ends in no blank.
void render_units(unit_system system, const exponents& dim, text_str*& out, text_str*& err);

/// Appends the text of a value's units: the exception that agrees, or the current system's.
void unit_text(text_str*& out, const dim_value& value, text_str*& err);
/// The same, with a word for a value without exponents that no exception matches.
void unit_text_for_message(text_str*& out, const dim_value& value, text_str*& err);

// Output. Appends ` = `, the number or the vector, a blank and the unit text. Unless no_check is set the
// value must agree loosely with the unit; a failure leaves its message in err.

void print_value_in_default_units(text_str*& out, const dim_value& value, text_str*& err, bool no_check);
/// Exceptions don't count.
void print_value_in_system(unit_system system, text_str*& out, const dim_value& value, text_str*& err,
                           bool no_check);
/// The unit text at the cursor is read and shown as it stands, up to a comment. True if the value was
/// printed.
bool print_value_with_requested_units(text_str*& out, const dim_value& value, cursor& expptr, text_str*& err,
                                      bool no_check);

} // namespace metrify
