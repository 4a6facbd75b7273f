#include "base/failure.h"

#include <gtest/gtest.h>

namespace {

using namespace metrify;

TEST(numeric_failure, appends_its_text_and_returns_0) {
    work_text err;
    append(err.str, "earlier. ");
    EXPECT_EQ(numeric_failure(err.str, "later."), 0.0);
    EXPECT_EQ(err.view(), "earlier. later.");
}

TEST(replace_message, drops_the_earlier_text) {
    work_text err;
    append(err.str, "earlier");
    replace_message(err.str, "later");
    EXPECT_EQ(err.view(), "later");
}

TEST(replace_message, takes_several_parts) {
    work_text err;
    append(err.str, "earlier");
    replace_message(err.str, "'", "m^x", "' has ", 2, " errors");
    EXPECT_EQ(err.view(), "'m^x' has 2 errors");
}

} // namespace
