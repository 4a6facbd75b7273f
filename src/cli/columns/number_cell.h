#pragma once

// Numbers in cells, in full precision: a number is written with the fewest digits that read back equal.

#include <string>
#include <string_view>

namespace metrify {

/// Reads a cell that is a finite number, perhaps in quotes or between blanks. A number has an optional sign,
/// digits with an optional point, and an optional exponent.
bool read_number_cell(std::string_view cell, double& value);

/// Appends the number, in quotes if the cell is.
void append_number_cell(std::string& row, std::string_view cell, double value);

} // namespace metrify
