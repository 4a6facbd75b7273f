#pragma once

// The units that the calculator in use knows, as a list for people.

#include <iosfwd>
#include <string>
#include <string_view>

namespace metrify {

/// Lists the units whose name contains the text in any case, and those of the quantities that people call by
/// it: name, value of one in base units, base units, quantity. If there are none, the text itself can be a
/// unit expression. 1 if nothing is found; err then has the nearest names.
int list_units(std::string_view text, std::ostream& out, std::ostream& err);

/// Lists the units of the same dimension as a unit expression.
int list_units_like(std::string_view expression, std::ostream& out, std::ostream& err);

/// All units by quantity, as the table of docs/units.md.
std::string unit_tables();

} // namespace metrify
