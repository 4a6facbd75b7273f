// The table of the default systems, and the look-up of their keywords.

#include "units/default_system.h"

#include <gtest/gtest.h>
#include <string_view>

namespace {

using namespace metrify;

TEST(default_systems, have_a_row_at_the_index_of_their_number) {
    ASSERT_EQ(default_systems.size(), 4U);
    for (std::size_t i = 0; i < default_systems.size(); ++i)
        EXPECT_EQ(static_cast<std::size_t>(default_systems[i].system), i);
}

TEST(default_systems, have_their_keywords) {
    EXPECT_EQ(default_systems[0].name, "MKS");
    EXPECT_EQ(default_systems[1].name, "cgs");
    EXPECT_EQ(default_systems[2].name, "FPS");
    EXPECT_EQ(default_systems[3].name, "IPS");
}

TEST(default_systems, have_their_units_in_the_order_of_writing) {
    EXPECT_EQ(default_systems[0].units, (slot_names{"kg", "m", "rad", "s", "degK", "mol", "degKdiff", "C"}));
    EXPECT_EQ(default_systems[1].units, (slot_names{"g", "cm", "rad", "s", "degK", "mol", "degK", "C"}));
    EXPECT_EQ(default_systems[2].units, (slot_names{"lbf", "ft", "rad", "s", "degR", "mol", "degR", "C"}));
    EXPECT_EQ(default_systems[3].units, (slot_names{"lbf", "in", "rad", "s", "degR", "mol", "degF", "C"}));
}

TEST(default_systems, derive_the_mass_from_a_force_in_feet_and_inches_only) {
    EXPECT_FALSE(default_systems[0].is_force_based);
    EXPECT_FALSE(default_systems[1].is_force_based);
    EXPECT_TRUE(default_systems[2].is_force_based);
    EXPECT_TRUE(default_systems[3].is_force_based);
}

TEST(default_systems, have_a_singular_in_MKS_only) {
    EXPECT_TRUE(default_systems[0].has_singular);
    EXPECT_FALSE(default_systems[1].has_singular);
    EXPECT_FALSE(default_systems[2].has_singular);
    EXPECT_FALSE(default_systems[3].has_singular);
}

TEST(match_default_system, finds_a_keyword_and_moves_after_it) {
    for (const char* const text : {"MKS", "cgs", "FPS", "IPS"}) {
        cursor p(text);
        const default_system* const row = match_default_system(p);
        ASSERT_NE(row, nullptr) << text;
        EXPECT_EQ(row->name, text);
        EXPECT_EQ(p.at, text + 3);
    }
}

TEST(match_default_system, finds_a_keyword_before_a_character_that_no_name_has) {
    const char* const text = "FPS(N)";
    cursor p(text);
    const default_system* const row = match_default_system(p);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->system, system_FPS);
    EXPECT_EQ(p.at, text + 3);
}

TEST(match_default_system, finds_nothing_else_and_does_not_move) {
    for (const char* const text : {"", "mks", "CGS", "Cgs", "MK", "MKSx", "MKS2", "cgs_", " MKS", "SI"}) {
        cursor p(text);
        EXPECT_EQ(match_default_system(p), nullptr) << text;
        EXPECT_EQ(p.at, text) << text;
    }
}

} // namespace
