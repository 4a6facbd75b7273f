#include "cli/session/error_colour.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

using metrify::with_coloured_errors;

TEST(coloured_errors, are_the_lines_with_a_message) {
    EXPECT_EQ(with_coloured_errors("[  1 ] x\n       ERROR: 'x' undefined.\n\n"),
              "[  1 ] x\n\x1b[31m       ERROR: 'x' undefined.\x1b[0m\n\n");
}
TEST(coloured_errors, leave_other_lines_as_they_are) {
    for (const char* listing : {"", "[  1 ] 1 m # ERROR\n        = 1 m\n\n", "\n# ERROR:\n\n", "no line end"})
        EXPECT_EQ(with_coloured_errors(listing), listing);
}

} // namespace
