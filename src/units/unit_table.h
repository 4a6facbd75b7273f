#pragma once

// The vocabulary of units: 375 names, fixed at build time.

#include "base/cursor.h"
#include "units/dim_value.h"

#include <span>
#include <string_view>

namespace metrify {

/// A unit with the number of it that makes up one unit of the base system: 3.28083989501312 for `ft`.
/// `degC` and `degF` read like `degK` and `degR` here; their offset is the unit expression's affair.
struct unit_entry {
    std::string_view name;
    double factor;
    exponents dim;
};

/// All units, grouped by dimension.
std::span<const unit_entry> all_units();

/// The unit whose name is the whole token at the cursor, case included, or null. On a hit the cursor moves
/// behind the name. Does not skip blanks.
const unit_entry* find_unit(cursor& expptr);

} // namespace metrify
