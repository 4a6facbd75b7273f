#pragma once

// The vocabulary of units: 375 names, fixed at build time.

#include "base/cursor.h"
#include "units/dim_value.h"

#include <span>
#include <string_view>

namespace metrify {

/// A unit with its number per unit of the base system: 3.28083989501312 for `ft`.
/// `degC` and `degF` read like `degK` and `degR` here; the unit expression adds their offset.
struct unit_entry {
    std::string_view name;
    double factor;
    exponents dim;
};

/// All units, grouped by dimension.
std::span<const unit_entry> all_units();

/// The unit whose name is the whole token at the cursor, case included, or null. If found, the cursor moves
/// after the name. Does not skip blanks.
const unit_entry* find_unit(cursor& expptr);

} // namespace metrify
