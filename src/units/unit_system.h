#pragma once

// The current default unit system and its exceptions, which the statements MKS, cgs, FPS and IPS set.

#include "base/cursor.h"
#include "units/dim_value.h"

#include <string>
#include <vector>

namespace metrify {

enum unit_system : unsigned { system_MKS, system_cgs, system_FPS, system_IPS };

struct unit_exception {
    std::string text;
    exponents dim = {};
    bool is_unit = false; // false as well once a unit of the text is no longer known
};

struct unit_system_state {
    unit_system current = system_MKS;
    std::vector<unit_exception> exceptions;
    unsigned user_units_read = 0; // generation of the user units that the exponents were computed with
};

/// MKS and no exceptions.
void reset_unit_state();

void set_unit_system(unit_system system);
unit_system current_unit_system();
int exception_count();

/// The text of the first exception with all these exponents, as it was written, or null.
const std::string* matching_exception(const exponents& dim);

/// Reads the list in parentheses after a system's keyword, e.g. `(N, Pa)`. If it is missing or empty, the
/// exceptions do not change, nor if it is faulty, with a message in err.
void read_exceptions(cursor& expptr, text_str*& err);

/// Runs a system statement after its keyword. The answer is appended to out, after the text of err if it is
/// set.
void run_system_statement(unit_system system, cursor& expptr, text_str*& out, text_str*& err);

} // namespace metrify
