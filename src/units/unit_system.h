#pragma once

// The default unit system in force and the exceptions to it: the statements MKS, cgs, FPS and IPS.

#include "base/cursor.h"
#include "units/dim_value.h"

#include <string>

namespace metrify {

enum unit_system : unsigned { system_MKS, system_cgs, system_FPS, system_IPS };

/// MKS and no exceptions.
void reset_unit_state();

void set_unit_system(unit_system system);
unit_system current_unit_system();
int exception_count();

/// The text of the first exception whose exponents all agree with these, as it was written, or null.
const std::string* matching_exception(const exponents& dim);

/// The list in parentheses behind a system's keyword, e.g. `(N, Pa)`. Without one, or with an empty one, the
/// exceptions stay; so they do if the list is faulty, with a message in err.
void read_exceptions(cursor& expptr, text_str*& err);

/// A whole system statement behind its keyword. The answer goes to out, behind the text of err if it is set.
void run_system_statement(unit_system system, cursor& expptr, text_str*& out, text_str*& err);

} // namespace metrify
