#include "cli/columns/progress.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

using metrify::progress;
using metrify::progress_line;

TEST(progress_line, shows_the_share_the_rate_and_the_time_left) {
    EXPECT_EQ(progress_line(250, 1000, 5000000, 2.0),
              "[#######.......................] 25%  2500k rows/s  6 s left");
    EXPECT_EQ(progress_line(10, 1000, 500, 2.0),
              "[..............................] 1%  250 rows/s  3 min 18 s left");
}
TEST(progress_line, shows_the_rows_if_the_total_is_unknown) {
    EXPECT_EQ(progress_line(250, 0, 4000000, 2.0), "4000000 rows  2000k rows/s");
}
TEST(progress_line, does_not_exceed_the_total) {
    EXPECT_EQ(progress_line(1200, 1000, 10, 1.0),
              "[##############################] 100%  10 rows/s  0 s left");
}

TEST(progress, is_not_shown_for_a_short_conversion) {
    std::ostringstream terminal;
    {
        progress shown(&terminal, 1000);
        shown.show(500, 10);
    }
    EXPECT_EQ(terminal.str(), "");
}

} // namespace
