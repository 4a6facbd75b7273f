#pragma once

// The four systems in which values are shown by default: one row each.

#include "base/cursor.h"
#include "units/unit_system.h"

#include <array>
#include <string_view>

namespace metrify {

constexpr std::size_t slot_count = 8;

/// The exponents of a system's units in the order in which they are written: mass or force, length, angle,
/// time, temperature, amount, temperature difference, charge.
using slot_names = std::array<std::string_view, slot_count>;

struct default_system {
    unit_system system;
    std::string_view name; // the keyword
    bool has_singular;     // whether the message for one exception says "exception"
    bool is_force_based;   // the first unit is a force, so that mass is derived
    slot_names units;
};

// Only MKS has a separate name for the temperature difference; IPS writes degF.
constexpr std::array<default_system, 4> default_systems = {{
    {system_MKS, "MKS", true, false, {"kg", "m", "rad", "s", "degK", "mol", "degKdiff", "C"}},
    {system_cgs, "cgs", false, false, {"g", "cm", "rad", "s", "degK", "mol", "degK", "C"}},
    {system_FPS, "FPS", false, true, {"lbf", "ft", "rad", "s", "degR", "mol", "degR", "C"}},
    {system_IPS, "IPS", false, true, {"lbf", "in", "rad", "s", "degR", "mol", "degF", "C"}},
}};

/// The system whose name is the whole word at the cursor, case included, or null. Moves after the name if
/// there is one.
const default_system* match_default_system(cursor& expptr);

} // namespace metrify
