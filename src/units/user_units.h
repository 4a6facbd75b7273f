#pragma once

// The user's own units. They live for one run.

#include "base/cursor.h"
#include "base/named_list.h"
#include "units/dim_value.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace metrify {

struct user_unit {
    std::string name;
    std::int32_t serial; // from 701 on; kept when the unit is defined anew
    dim_value value;     // kind 0; comp[0] is the unit's value in the base system
};

struct user_unit_store {
    named_list<user_unit> units;
    std::int32_t serial = 700; // the one assigned last
    unsigned generation = 0;
};

/// Sets the serial numbers back, so that the first user unit gets 701.
void reset_user_units();
void free_user_units();

/// Changes whenever a unit is stored or the units are freed: what was read with the units before may have
/// another meaning now.
unsigned user_unit_generation();

/// If a user unit's whole name stands behind blanks at the cursor: copies its record to out and moves the
/// cursor behind the name. Otherwise the cursor stays.
bool find_user_unit(cursor& expptr, dim_value& out);

/// Adds a unit, or replaces the one of that name. A value of 0 is a failure. Of a vector the first component
/// is kept.
void store_user_unit(std::string_view name, const dim_value& value, text_str*& err);

} // namespace metrify
