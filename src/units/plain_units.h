#pragma once

// A text that is a unit expression and nothing else.

#include "units/dim_value.h"

#include <string_view>

namespace metrify {

/// True for a unit expression that ends where the text ends and has no error, no comment and no line break.
/// An empty text is the unit expression of a plain number. out receives its scale, made with the user units
/// of the calculator in use.
bool parse_plain_units(std::string_view text, unit_scale& out);

} // namespace metrify
