#pragma once

// The DefUnit statement, which defines a user's own unit.

#include "base/cursor.h"
#include "base/text_str.h"

#include <string_view>

namespace metrify {

/// True if a user unit may have this name: it is no unit of the table, no function and no variable.
bool check_new_unit_name(std::string_view name, text_str*& err);

/// DefUnit's arguments, a name and a value in parentheses. Writes the answer to out.
void define_user_unit(cursor& expptr, text_str*& out, text_str*& err);

} // namespace metrify
