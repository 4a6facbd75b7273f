#pragma once

// A calculator's state of units: the user units, the default system and its exceptions.

#include "units/unit_system.h"
#include "units/user_units.h"

namespace metrify {

struct unit_state {
    user_unit_store user_units;
    unit_system_state system;
};

/// The state of the calculator in use on the calling thread. Defined with the calculator, which owns it.
unit_state& current_unit_state();

} // namespace metrify
