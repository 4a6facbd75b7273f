// Compares every routine of the special functions with a table of exact values. The tables, which include the
// scale of each error, and the program that makes them are in this folder.

#include "tests/numerics/value_table.h"

#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace metrify::test;

class truth : public testing::TestWithParam<routine> {};

TEST_P(truth, is_met_within_the_bound) {
    const routine& tested = GetParam();
    const std::vector<table_row> rows = read_table("truth", tested);
    EXPECT_GE(rows.size(), 200U);
    const largest_error largest = compare_with_table(tested, rows);
    EXPECT_LE(largest.error, tested.bound) << "at " << largest.at;
    std::cout << tested.name << ": " << rows.size() << " points, largest error " << largest.error << " at "
              << largest.at << '\n';
}

INSTANTIATE_TEST_SUITE_P(special_functions, truth,
                         testing::ValuesIn(all_routines().begin(), all_routines().end()), routine_name);

} // namespace
