#pragma once

// The units that the user defines. They exist for one run.

#include "base/cursor.h"
#include "base/named_list.h"
#include "units/dim_value.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace metrify {

struct user_unit {
    std::string name;
    std::int32_t serial; // from 701 on; kept when the unit is redefined
    dim_value value;     // kind 0; comp[0] is the unit's value in the base system
};

struct user_unit_store {
    named_list<user_unit> units;
    std::int32_t serial = 700; // the one assigned last
    unsigned generation = 0;
};

/// Restarts the serial numbers, so that the first user unit gets 701.
void reset_user_units();
void free_user_units();

/// Changes whenever a unit is stored or the units are freed. A unit text parsed under another generation may
/// have another meaning.
unsigned user_unit_generation();

/// If the cursor is at a user unit's whole name, or at blanks before it: copies its record to out and moves
/// after the name. Otherwise the cursor does not move.
bool find_user_unit(cursor& expptr, dim_value& out);

/// Adds a unit, or replaces the one of that name. A value of 0 is an error. Only the first component of a
/// vector is stored.
void store_user_unit(std::string_view name, const dim_value& value, text_str*& err);

} // namespace metrify
