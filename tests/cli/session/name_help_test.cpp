#include "cli/session/name_help.h"

#include <gtest/gtest.h>

namespace {

using metrify::help_on;
using metrify::session;

TEST(help, shows_the_value_of_a_unit) {
    EXPECT_EQ(help_on("cm", session()), "1 cm = 0.01 m\n");
    EXPECT_EQ(help_on("kg", session()), "1 kg = 1 kg\n");
}
TEST(help, shows_the_description_of_a_function_in_any_case) {
    EXPECT_EQ(help_on("SIN", session()).find("### sin(x)\n\nThe sine.\n"), 0U);
}
TEST(help, tells_names_of_the_session) {
    session s;
    s.enter("speed = 3 m/s");
    s.enter("DefUnit(ell, 18 in)");
    EXPECT_EQ(help_on("speed", s), "speed is defined in this session.\n");
    EXPECT_EQ(help_on("ell", s), "ell is defined in this session.\n");
}
TEST(help, tells_that_a_name_is_unknown) {
    EXPECT_EQ(help_on("nothing", session()), "There is no unit, function or variable 'nothing'.\n");
}

} // namespace
