#pragma once

// The tables of values in the folders of the tests: arguments, and for each output of a routine its value and
// the scale of its error.

#include "tests/numerics/routines.h"

#include <array>
#include <string>
#include <vector>

namespace metrify::test {

struct tabled_value {
    double value, scale;
};

struct table_row {
    routine_arguments arguments;
    std::array<tabled_value, most_outputs> outputs;
    std::string text; // of the arguments
};

/// The table of a routine in a folder of the tests. If there is none, the test fails and the table is empty.
std::vector<table_row> read_table(const std::string& folder, const routine& tested);

/// The largest error of a routine's outputs against a table, and the arguments where it was.
struct largest_error {
    double error;
    std::string at;
};
largest_error compare_with_table(const routine& tested, const std::vector<table_row>& rows);

} // namespace metrify::test
