// Compares the routines that must use a particular approximation with tables of its values, so that every
// coefficient and the end of every iteration is tested. The program that makes the tables is in this folder.

#include "tests/numerics/value_table.h"

#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace metrify::test;

class stated : public testing::TestWithParam<routine> {};

TEST_P(stated, is_met_to_the_last_digits) {
    const routine& tested = GetParam();
    const std::vector<table_row> rows = read_table("stated", tested);
    EXPECT_GE(rows.size(), 200U);
    const largest_error largest = compare_with_table(tested, rows);
    EXPECT_LE(largest.error, tested.stated_bound) << "at " << largest.at;
    std::cout << tested.name << ": " << rows.size() << " points, largest error " << largest.error << " at "
              << largest.at << '\n';
}

std::vector<routine> routines_with_required_approximation() {
    std::vector<routine> found;
    for (const routine& each : all_routines())
        if (each.stated_bound != not_stated)
            found.push_back(each);
    return found;
}

INSTANTIATE_TEST_SUITE_P(special_functions, stated, testing::ValuesIn(routines_with_required_approximation()),
                         routine_name);

} // namespace
