#include "cli/session/completion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using metrify::candidate_table;
using metrify::complete_word;
using metrify::completion;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(completion, inserts_the_rest_of_the_only_candidate) {
    const completion found = complete_word("3 fath", {});
    EXPECT_THAT(found.candidates, ElementsAre("fathom", "fathoms"));
    EXPECT_EQ(found.inserted, "om");
}
TEST(completion, gives_a_function_its_parenthesis_and_ignores_its_case) {
    EXPECT_EQ(complete_word("x = BesselJ", {}).inserted, "(");
    EXPECT_EQ(complete_word("EllipticP", {}).inserted, "i(");
    EXPECT_EQ(complete_word("ellipticp", {}).inserted, "i(");
}
TEST(completion, inserts_what_all_candidates_have_in_common) {
    const completion found = complete_word("Bess", {});
    EXPECT_THAT(found.candidates, ElementsAre("BesselI(", "BesselJ(", "BesselK(", "BesselY("));
    EXPECT_EQ(found.inserted, "el");
    EXPECT_EQ(complete_word("Bessel", {}).inserted, "");
}
TEST(completion, finds_the_names_of_the_session) {
    EXPECT_EQ(complete_word("2 * velo", {"velocity_of_car"}).inserted, "city_of_car");
    EXPECT_THAT(complete_word("Velo", {"velocity_of_car"}).candidates, IsEmpty());
}
TEST(completion, finds_commands_at_the_start_of_the_line_only) {
    EXPECT_EQ(complete_word(":re", {}).inserted, "start");
    EXPECT_EQ(complete_word("hel", {}).inserted, "p");
    EXPECT_THAT(complete_word("3 :rest", {}).candidates, IsEmpty());
    EXPECT_THAT(complete_word("3 qui", {}).candidates, IsEmpty());
}
TEST(completion, finds_keywords_of_the_language) {
    EXPECT_THAT(complete_word("Print", {}).candidates, ElementsAre("PrintFunc"));
}
TEST(completion, completes_a_unit_directly_after_a_number) {
    EXPECT_THAT(complete_word("3fatho", {}).candidates, Contains("fathom"));
}
TEST(completion, has_no_candidates_without_a_word) {
    for (const char* text : {"", "3 ", "x = (", "3", "nothinglikethis"}) {
        EXPECT_THAT(complete_word(text, {}).candidates, IsEmpty()) << text;
        EXPECT_EQ(complete_word(text, {}).inserted, "") << text;
    }
}

TEST(candidate_table, has_columns_that_fit_the_width) {
    EXPECT_EQ(candidate_table({"a", "bcd", "ef"}, 10), "a    bcd\nef\n");
    EXPECT_EQ(candidate_table({"a", "bcd", "ef"}, 80), "a    bcd  ef\n");
    EXPECT_EQ(candidate_table({"abc", "d"}, 2), "abc\nd\n");
}

} // namespace
