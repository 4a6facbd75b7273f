#include "cli/session.h"

#include <gtest/gtest.h>

namespace {

using metrify::session;

TEST(session, keeps_variables) {
    session s;
    EXPECT_EQ(s.enter("x = 3 ft"), "[  1 ] x = 3 ft\n       x = 0.9144 m\n\n");
    EXPECT_EQ(s.enter("x; in"), "[  2 ] x; in\n        = 36 in\n\n");
}
TEST(session, keeps_user_units_and_default_units) {
    session s;
    s.enter("DefUnit(ell, 18 in)");
    EXPECT_NE(s.enter("2 ell; in").find(" = 36 in"), std::string::npos);
    s.enter("cgs");
    EXPECT_NE(s.enter("1 ell").find(" = 45.72 cm"), std::string::npos);
}
TEST(session, goes_on_behind_an_error) {
    session s;
    s.enter("x = 1 m");
    EXPECT_NE(s.enter("x + 1 s").find("ERROR:"), std::string::npos);
    EXPECT_NE(s.enter("x").find(" = 1 m"), std::string::npos);
}
TEST(session, shows_a_line_once) {
    session s;
    s.enter("1 m");
    const std::string second = s.enter("2 m");
    EXPECT_EQ(second.find("1 m"), std::string::npos) << second;
}
TEST(session, keeps_the_comments_of_two_entries_apart) {
    session s;
    s.enter("# one");
    EXPECT_NE(s.enter("# two").find("# two"), std::string::npos);
    EXPECT_NE(s.enter("1 m").find(" = 1 m"), std::string::npos);
}
TEST(session, takes_an_empty_entry) {
    session s;
    s.enter("x = 1 m");
    EXPECT_EQ(s.enter(""), "");
    EXPECT_NE(s.enter("x").find(" = 1 m"), std::string::npos);
}
TEST(session, forgets_all_when_it_starts_over) {
    session s;
    s.enter("x = 1 m");
    s.start_over();
    EXPECT_EQ(s.enter("x"), "[  1 ] x\n       ERROR: 'x' undefined.\n\n");
}
TEST(session, sees_that_an_entry_goes_on) {
    EXPECT_TRUE(session::is_continued("1 + \\"));
    EXPECT_TRUE(session::is_continued("1 + \\\n2 + \\"));
    EXPECT_FALSE(session::is_continued("1 + \\\n2"));
    EXPECT_FALSE(session::is_continued("1 + 2"));
    EXPECT_FALSE(session::is_continued("1 # \\"));
}
TEST(session, takes_an_entry_of_several_lines) {
    session s;
    EXPECT_NE(s.enter("1 m + \\\n2 m").find(" = 3 m"), std::string::npos);
}
TEST(session, is_not_spoilt_by_an_entry_that_the_parser_gives_up) {
    session s;
    s.enter("x = 1 m");
    s.enter(std::string(300, '(') + "1" + std::string(300, ')'));
    EXPECT_NE(s.enter("x").find(" = 1 m"), std::string::npos);
}

} // namespace
