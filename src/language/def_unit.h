#pragma once

// The DefUnit statement, which defines a user unit.

#include "base/cursor.h"
#include "base/text_str.h"

#include <string_view>

namespace metrify {

/// True if a user unit may have this name, which means no unit of the table, no function and no variable.
/// Otherwise reports an error.
bool check_new_unit_name(std::string_view name, text_str*& err);

/// Reads DefUnit's arguments, a name and a value in parentheses, defines the unit, and writes the answer to
/// out.
void define_user_unit(cursor& expptr, text_str*& out, text_str*& err);

} // namespace metrify
