#include "cli/columns/csv_row.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string_view>

namespace {

using metrify::csv_row;
using metrify::plain_cell;
using testing::ElementsAre;

struct read_row : csv_row {
    explicit read_row(std::string_view text, bool is_complete = true, char delimiter = ',')
        : length(read(text, delimiter, is_complete)) {}
    std::size_t length;
};

TEST(csv_row, has_the_cells_between_delimiters) {
    EXPECT_THAT(read_row("a,,b c\nnext").cells, ElementsAre("a", "", "b c"));
    EXPECT_EQ(read_row("a,,b c\nnext").length, 7U);
    EXPECT_THAT(read_row("a,b\tc\n", true, '\t').cells, ElementsAre("a,b", "c"));
}
TEST(csv_row, has_one_empty_cell_on_an_empty_line) {
    EXPECT_THAT(read_row("\n1").cells, ElementsAre(""));
}
TEST(csv_row, ends_with_LF_or_with_CR_LF) {
    EXPECT_EQ(read_row("a\nb").line_end, "\n");
    EXPECT_EQ(read_row("a\r\nb").line_end, "\r\n");
    EXPECT_THAT(read_row("a,b\r\nb").cells, ElementsAre("a", "b"));
    EXPECT_THAT(read_row("a\rb\n").cells, ElementsAre("a\rb"));
}
TEST(csv_row, ends_with_a_complete_text) {
    const read_row last("a,b");
    EXPECT_THAT(last.cells, ElementsAre("a", "b"));
    EXPECT_EQ(last.length, 3U);
    EXPECT_EQ(last.line_end, "");
}
TEST(csv_row, is_not_read_from_a_text_that_may_go_on) {
    EXPECT_EQ(read_row("a,b", false).length, 0U);
    EXPECT_EQ(read_row("a,\"b\n", false).length, 0U);
    EXPECT_EQ(read_row("a,b\n", false).length, 4U);
}
TEST(csv_row, keeps_delimiters_and_line_ends_in_quotes) {
    EXPECT_THAT(read_row("\"a,b\nc\",d\n").cells, ElementsAre("\"a,b\nc\"", "d"));
}
TEST(csv_row, keeps_doubled_quotes_in_quotes) {
    EXPECT_THAT(read_row("\"a \"\"b\"\", c\",d\n").cells, ElementsAre("\"a \"\"b\"\", c\"", "d"));
}
TEST(csv_row, takes_a_quote_within_a_cell_as_it_is) {
    EXPECT_THAT(read_row("5\",6\"\n").cells, ElementsAre("5\"", "6\""));
}
TEST(csv_row, has_an_open_quote_if_the_text_ends_in_quotes) {
    EXPECT_TRUE(read_row("a,\"b\n1,2\n").has_open_quote);
    EXPECT_TRUE(read_row("\"a\"\"").has_open_quote);
    EXPECT_FALSE(read_row("\"a\"").has_open_quote);
    EXPECT_FALSE(read_row("5\"").has_open_quote);
}

TEST(plain_cell, is_without_its_quotes) {
    EXPECT_EQ(plain_cell("a\"b"), "a\"b");
    EXPECT_EQ(plain_cell("\"\""), "");
    EXPECT_EQ(plain_cell("\"a \"\"b\"\", c\""), "a \"b\", c");
}
TEST(plain_cell, keeps_what_follows_its_quotes) {
    EXPECT_EQ(plain_cell("\"a\"b"), "ab");
    EXPECT_EQ(plain_cell("\"a"), "a");
    EXPECT_EQ(plain_cell("\"a\"\""), "a\"");
    EXPECT_EQ(plain_cell("\""), "");
}

} // namespace
