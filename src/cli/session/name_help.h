#pragma once

// Help on one name: `help sin`.

#include "language/session.h"

#include <string>
#include <string_view>

namespace metrify {

/// What the name is: a variable or unit of the user, a unit, a function, or unknown.
std::string help_on(std::string_view name, const session& calculator);

} // namespace metrify
