#pragma once

// What a calculator keeps about units: the user's own ones, the default system and its exceptions.

#include "units/unit_system.h"
#include "units/user_units.h"

namespace metrify {

struct unit_state {
    user_unit_store user_units;
    unit_system_state system;
};

/// That of the calculator in use on the calling thread. It is defined with the calculator, which owns it.
unit_state& current_unit_state();

} // namespace metrify
