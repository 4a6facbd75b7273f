#pragma once

// User units that are defined before a program starts.

#include <string>
#include <string_view>
#include <vector>

namespace metrify {

/// A line that defines no unit.
struct definition_fault {
    int line;
    std::string message; // without a newline
};

/// Defines the units of a text that consists of DefUnit lines, comments and empty lines on the calculator in
/// use. There is no listing, and the statement number does not change. Lines with faults are skipped.
std::vector<definition_fault> define_units(const std::string& definitions);

} // namespace metrify
