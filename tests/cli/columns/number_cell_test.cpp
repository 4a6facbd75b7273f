#include "cli/columns/number_cell.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using metrify::append_number_cell;
using metrify::read_number_cell;

TEST(number_cell, is_a_decimal_number) {
    struct {
        const char* cell;
        double value;
    } const cases[] = {{"3", 3.0},    {"-2.5", -2.5}, {"+1", 1.0},      {"1e3", 1000.0}, {".5", 0.5},
                       {" 7\t", 7.0}, {"\"8\"", 8.0}, {"\" 9 \"", 9.0}, {"5.", 5.0},     {"1E-2", 0.01}};
    for (const auto& [cell, value] : cases) {
        double read = 0.0;
        EXPECT_TRUE(read_number_cell(cell, read)) << cell;
        EXPECT_EQ(read, value) << cell;
    }
}
TEST(number_cell, is_nothing_else) {
    for (const char* cell :
         {"", " ", "abc", "3m", "1,5", "0x10", "inf", "nan", "1e400", "+-1", "++1", "\"", "1 2"}) {
        double read = 0.0;
        EXPECT_FALSE(read_number_cell(cell, read)) << cell;
    }
}
TEST(number_cell, is_written_with_the_fewest_digits_that_read_back_equal) {
    std::string row;
    append_number_cell(row, "1", 0.1);
    EXPECT_EQ(row, "0.1");
    row.clear();
    append_number_cell(row, "1", 0.1 + 0.2);
    EXPECT_EQ(row, "0.30000000000000004");
}
TEST(number_cell, is_written_in_quotes_if_it_was_in_quotes) {
    std::string row = "a,";
    append_number_cell(row, "\"1\"", -2.5);
    EXPECT_EQ(row, "a,\"-2.5\"");
}

} // namespace
