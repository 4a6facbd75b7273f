#pragma once

// A unit's name at the cursor: the user's own units first, then the table.

#include "base/cursor.h"
#include "units/dim_value.h"

#include <string_view>

namespace metrify {

/// Looks the whole token at the cursor up. On a hit out has the factor in comp[0] and the unit's exponents,
/// and the cursor moves behind the name. On a miss out is cleared, the cursor stays, and nothing is reported:
/// no unit has the factor 0. User units are found behind blanks too.
bool lookup_unit(cursor& expptr, dim_value& out);

/// The same behind blanks and comments, and never at a statement's end. On a hit name receives the unit's
/// name if it is asked for, and the cursor is put back unless advance is set.
bool is_unit(bool advance, cursor& expptr, dim_value& out, std::string_view* name = nullptr);

} // namespace metrify
