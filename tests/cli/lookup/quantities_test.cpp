#include "cli/lookup/quantities.h"
#include "cli/lookup/unit_text.h"
#include "cli/units/everyday_units.h"
#include "language/unit_definitions.h"
#include "machine/calculator.h"
#include "units/unit_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace metrify;
using testing::ElementsAre;

TEST(quantities, have_units_of_their_dimension) {
    calculator used;
    const calculator_scope scope(used);
    define_units(everyday_units());
    for (const quantity& row : all_quantities()) {
        const std::optional<unit_scale> unit = read_unit_text(row.unit);
        ASSERT_TRUE(unit) << row.names;
        for (const std::string_view text : split_list(row.common_units)) {
            const std::optional<unit_scale> common = read_unit_text(text);
            ASSERT_TRUE(common) << text;
            EXPECT_TRUE(same_units_strict(common->dim, unit->dim)) << row.names << ": " << text;
        }
    }
}

TEST(quantities, name_the_dimension_of_every_unit) {
    for (const unit_entry& unit : all_units())
        EXPECT_NE(quantity_name(unit.dim), "") << unit.name;
}

TEST(quantities, are_called_by_their_most_common_name) {
    EXPECT_EQ(quantity_name(read_unit_text("psi")->dim), "pressure");
    EXPECT_EQ(quantity_name(read_unit_text("m^7")->dim), "");
}

TEST(split_list, drops_blanks_after_commas) {
    EXPECT_THAT(split_list("kW hr, J,eV"), ElementsAre("kW hr", "J", "eV"));
    EXPECT_TRUE(split_list("").empty());
}

TEST(unit_text, shows_whether_two_texts_are_one_unit) {
    const auto is_same = [](const char* a, const char* b) {
        return is_same_unit(*read_unit_text(a), *read_unit_text(b));
    };
    EXPECT_TRUE(is_same("kPa", "kpa"));
    EXPECT_TRUE(is_same("N", "kg m/s^2"));
    EXPECT_FALSE(is_same("kPa", "mPa"));
    EXPECT_FALSE(is_same("m", "s"));
    EXPECT_FALSE(is_same("degC", "degK"));
}

TEST(unit_text, is_a_unit_expression_as_a_whole) {
    EXPECT_TRUE(read_unit_text("kg m / s^2"));
    EXPECT_FALSE(read_unit_text("kg foo"));
    EXPECT_FALSE(read_unit_text("foo"));
    EXPECT_FALSE(read_unit_text("m^"));
}

} // namespace
