#pragma once

// Look-up of a unit's name at the cursor: first the user units, then the table.

#include "base/cursor.h"
#include "units/dim_value.h"

#include <string_view>

namespace metrify {

/// Looks up the whole token at the cursor. If it is a unit, out has the factor in comp[0] and the unit's
/// exponents, and the cursor moves after the name. Otherwise out is cleared and the cursor does not move; no
/// unit has the factor 0. Blanks before a user unit are skipped.
bool lookup_unit(cursor& expptr, dim_value& out);

/// The same after blanks and comments, and never at a statement's end. If name is not null, it receives the
/// unit's name. The cursor moves only if advance is set.
bool is_unit(bool advance, cursor& expptr, dim_value& out, std::string_view* name = nullptr);

} // namespace metrify
