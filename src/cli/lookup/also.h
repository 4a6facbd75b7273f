#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace metrify {

/// Writes a quantity in the common units of its dimension, one a line. Numbers between 1 and 1000 come first,
/// then those that need the fewest digits more; the units it was given and shown in are left out. Everyday
/// units are among them, whether they are loaded or not. Nothing if the text is no unit expression or nobody
/// names its dimension.
void write_in_common_units(double val, std::string_view in_units, std::string_view shown_units,
                           const std::string& unit_definitions, std::ostream& out);

} // namespace metrify
