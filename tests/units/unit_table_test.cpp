#include "tests/testing.h"
#include "tests/units/required_units.h"
#include "units/unit_expression.h"
#include "units/unit_lookup.h"
#include "units/unit_table.h"
#include "units/user_units.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace metrify;

std::vector<std::string> names_of(const required_units& row) {
    std::istringstream in{std::string(row.names)};
    std::vector<std::string> names;
    for (std::string name; in >> name;)
        names.push_back(name);
    return names;
}

const std::map<std::string, required_units>& required_by_name() {
    static const std::map<std::string, required_units> by_name = [] {
        std::map<std::string, required_units> made;
        for (const required_units& row : required_unit_rows)
            for (const std::string& name : names_of(row))
                made.emplace(name, row);
        return made;
    }();
    return by_name;
}

bool is_in_table(const std::string& text) {
    cursor p(text.c_str());
    return find_unit(p) != nullptr;
}

double factor_of(const std::string& name) {
    cursor p(name.c_str());
    const unit_entry* unit = find_unit(p);
    return unit == nullptr ? 0.0 : unit->factor;
}

exponents dimension_of(const std::string& name) {
    cursor p(name.c_str());
    const unit_entry* unit = find_unit(p);
    return unit == nullptr ? exponents{9, 9, 9, 9, 9, 9, 9, 9} : unit->dim;
}

TEST(unit_table, has_375_names) {
    EXPECT_EQ(all_units().size(), 375u);
    EXPECT_EQ(required_by_name().size(), 375u);
}

TEST(unit_table, has_no_name_twice) {
    std::set<std::string_view> names;
    for (const unit_entry& unit : all_units())
        EXPECT_TRUE(names.insert(unit.name).second) << unit.name;
}

TEST(unit_table, has_the_required_factor_and_exponents_for_every_name) {
    for (const auto& [name, row] : required_by_name()) {
        cursor p(name.c_str());
        const unit_entry* unit = find_unit(p);
        ASSERT_NE(unit, nullptr) << name;
        EXPECT_EQ(unit->name, name);
        EXPECT_EQ(unit->factor, row.factor) << name;
        EXPECT_EQ(unit->dim, row.dim) << name;
    }
}

TEST(unit_table, has_no_factor_of_zero_and_whole_exponents_from_minus_3_to_3) {
    for (const unit_entry& unit : all_units()) {
        EXPECT_NE(unit.factor, 0.0) << unit.name;
        for (const double exponent : unit.dim) {
            EXPECT_EQ(exponent, std::floor(exponent)) << unit.name;
            EXPECT_LE(std::fabs(exponent), 3.0) << unit.name;
        }
    }
}

TEST(find_unit, moves_after_a_name_it_finds_and_does_not_move_otherwise) {
    const std::string text = "mile/hour";
    cursor p(text.c_str());
    ASSERT_NE(find_unit(p), nullptr);
    EXPECT_EQ(p.at, text.c_str() + 4);
    EXPECT_EQ(find_unit(p), nullptr);
    EXPECT_EQ(p.at, text.c_str() + 4);
}

TEST(find_unit, matches_the_whole_token) {
    for (const char* text : {"m2", "m_x", "mx", "m_", "metre", "degCdifff", "ftx", "kg1"})
        EXPECT_FALSE(is_in_table(text)) << text;
    for (const char* text : {"m^2", "m ", "m*s", "m/s", "m)", "m;", "m#", "m\n", "m,", "m.", "m\xc2\xb2"})
        EXPECT_TRUE(is_in_table(text)) << text;
}

TEST(find_unit, rejects_a_prefix_of_a_longer_name) {
    const std::string name_characters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
    for (const auto& required : required_by_name()) {
        for (const char c : name_characters) {
            const std::string longer = required.first + c;
            EXPECT_EQ(is_in_table(longer), required_by_name().count(longer) == 1) << longer;
        }
    }
}

TEST(find_unit, finds_no_name_that_is_cut_short) {
    for (const auto& required : required_by_name()) {
        const std::string shorter = required.first.substr(0, required.first.size() - 1);
        EXPECT_EQ(is_in_table(shorter), required_by_name().count(shorter) == 1) << shorter;
    }
}

TEST(find_unit, minds_the_case) {
    for (const auto& required : required_by_name()) {
        for (std::size_t i = 0; i < required.first.size(); ++i) {
            std::string other = required.first;
            other[i] = static_cast<char>(is_letter(other[i]) ? other[i] ^ 0x20 : other[i]);
            EXPECT_EQ(is_in_table(other), required_by_name().count(other) == 1) << other;
        }
    }
    for (const char* text : {"Meter", "KG", "KM", "Kg", "MG", "FT"})
        EXPECT_FALSE(is_in_table(text)) << text;
    EXPECT_EQ(factor_of("Mg"), 0.001);
    EXPECT_EQ(factor_of("mg"), 1000000.0);
}

TEST(find_unit, distinguishes_a_difference_from_its_temperature) {
    EXPECT_EQ(dimension_of("degC"), in_degK);
    EXPECT_EQ(dimension_of("degCdiff"), in_degKdiff);
}

TEST(find_unit, treats_the_stop_pointer_as_the_end_of_the_name) {
    const char* text = "meter";
    cursor p(text, text + 1);
    const unit_entry* unit = find_unit(p);
    ASSERT_NE(unit, nullptr);
    EXPECT_EQ(unit->name, "m");
    EXPECT_EQ(p.at, text + 1);
    cursor stopped(text, text);
    EXPECT_EQ(find_unit(stopped), nullptr);
}

TEST(find_unit, finds_nothing_where_no_name_begins) {
    for (const char* text : {"", " m", "2m", "_m", "(m)", "\xc2\xb5m", "^", "%%"})
        EXPECT_EQ(is_in_table(text), text[0] == '%') << text;
}

// Rows that look like errors.

TEST(unit_table, has_pounds_and_ounces_as_forces) {
    for (const char* name : {"lb", "lbs", "pound", "pounds", "lbf", "oz", "ounce", "ounces", "ozf"})
        EXPECT_EQ(dimension_of(name), in_N) << name;
    for (const char* name : {"lbm", "ozm"})
        EXPECT_EQ(dimension_of(name), in_kg) << name;
}

TEST(unit_table, counts_many_curies_to_the_becquerel) {
    EXPECT_EQ(factor_of("Curie"), 37000000000.0);
    EXPECT_EQ(factor_of("curie"), 37000000000.0);
    EXPECT_EQ(factor_of("Bq"), 1.0);
}

TEST(unit_table, gives_a_nautical_mile_the_length_of_a_league) {
    EXPECT_EQ(factor_of("NauticalMile"), 0.000179985601);
    EXPECT_EQ(factor_of("Nmile"), 0.000179985601);
    EXPECT_EQ(factor_of("league"), 0.000179985601151908);
}

TEST(unit_table, keeps_factors_of_different_precision) {
    EXPECT_EQ(factor_of("hour"), 0.0002777777777778);
    EXPECT_EQ(factor_of("hours"), 0.0002777777777778);
    EXPECT_EQ(factor_of("hr"), 0.000277777777778);
    EXPECT_EQ(factor_of("fps"), 3.280839895);
    EXPECT_EQ(factor_of("fpm"), 196.8503937);
    EXPECT_EQ(factor_of("ft"), 3.28083989501312);
}

TEST(unit_table, has_mpa_as_a_thousandth_of_a_pascal) {
    EXPECT_EQ(factor_of("mpa"), factor_of("mPa"));
    EXPECT_EQ(factor_of("mpa"), 1000.0);
    EXPECT_EQ(factor_of("Mpa"), factor_of("MPa"));
    EXPECT_EQ(factor_of("kpa"), factor_of("kPa"));
    EXPECT_EQ(factor_of("Gpa"), factor_of("GPa"));
}

TEST(unit_table, has_parts_per_million_as_mass_per_volume) {
    const exponents density = {0, 0, 1, -3, 0, 0, 0, 0};
    for (const char* name : {"ppm", "ppb", "ppt"})
        EXPECT_EQ(dimension_of(name), density) << name;
    EXPECT_EQ(factor_of("ppm"), 1000.0);
}

TEST(unit_table, has_percent_without_dimension) {
    for (const char* name : {"%", "Percent", "percent"}) {
        EXPECT_EQ(factor_of(name), 100.0) << name;
        EXPECT_EQ(dimension_of(name), in_plain) << name;
    }
}

TEST(unit_table, distinguishes_a_ton_from_a_tonne) {
    EXPECT_NEAR(1.0 / factor_of("ton"), 1016.0, 1.0);
    EXPECT_EQ(factor_of("tonne"), 0.001);
}

TEST(unit_table, has_the_oersted_with_charge_per_time_and_length) {
    const exponents dim = {0, -1, 0, -1, 0, 0, 0, 1};
    for (const char* name : {"Oe", "oersted", "oersteds"})
        EXPECT_EQ(dimension_of(name), dim) << name;
}

TEST(unit_table, has_temperatures_in_pairs) {
    for (const char* name : {"degK", "degC", "degKdiff", "degCdiff"})
        EXPECT_EQ(factor_of(name), 1.0) << name;
    for (const char* name : {"degF", "degR", "degFdiff", "degRdiff"})
        EXPECT_EQ(factor_of(name), 1.8) << name;
    for (const char* name : {"degK", "degC", "degF", "degR"})
        EXPECT_EQ(dimension_of(name), in_degK) << name;
    for (const char* name : {"degKdiff", "degCdiff", "degFdiff", "degRdiff"})
        EXPECT_EQ(dimension_of(name), in_degKdiff) << name;
}

// Round trips.

TEST(every_unit, converts_a_value_to_the_base_system_and_back) {
    for (const unit_entry& unit : all_units()) {
        const std::string name(unit.name);
        cursor p(name.c_str());
        unit_scale scale;
        work_text err;
        ASSERT_TRUE(parse_unit_expression(p, scale, err.str)) << name;
        EXPECT_EQ(scale.factor, unit.factor) << name;
        EXPECT_EQ(scale.dim, unit.dim) << name;
        for (const double x : {1.0, -40.0, 1234.5}) {
            dim_value base;
            dim_value back;
            convert_non_affine_ToMKS_vec_full(scalar(x), base, scale, err.str);
            convert_non_affine_FromMKS_vec_full(base, back, scale);
            EXPECT_NEAR(back.comp[0], x, 1e-12 * std::max(std::fabs(x), std::fabs(scale.offset))) << name;
        }
        EXPECT_EQ(err.view(), "");
    }
}

TEST(every_unit, is_read_and_requested_in_a_program) {
    for (const unit_entry& unit : all_units()) {
        const std::string name(unit.name);
        EXPECT_EQ(run("7 " + name + "; " + name),
                  "[  1 ] 7 " + name + "; " + name + "\n        = 7 " + name + "\n\n");
    }
}

TEST(every_unit, is_no_name_for_a_variable_or_a_user_unit) {
    for (const unit_entry& unit : all_units()) {
        const std::string name(unit.name);
        if (name == "%" || name == "fps") // not a name, and a keyword of a unit system
            continue;
        EXPECT_EQ(run(name + " = 3"), "[  1 ] " + name + " = 3\n       ERROR: Variable name '" + name +
                                          "' matches a base unit.\n\n");
    }
}

// Lookup.

class unit_lookup : public testing::Test {
  protected:
    unit_lookup() {
        free_user_units();
        reset_user_units();
    }
    ~unit_lookup() override { free_user_units(); }

    work_text err;
};

TEST_F(unit_lookup, gives_the_factor_as_first_component) {
    const char* text = "ft + 1";
    cursor p(text);
    dim_value out = vector(1, 2, 3, in_N);
    EXPECT_TRUE(lookup_unit(p, out));
    EXPECT_EQ(out.kind, 0);
    EXPECT_EQ(out.comp, (std::array<double, 3>{3.28083989501312, 0, 0}));
    EXPECT_EQ(out.dim, in_m);
    EXPECT_EQ(p.at, text + 2);
}

TEST_F(unit_lookup, gives_a_cleared_record_on_a_miss) {
    const char* text = "foo";
    cursor p(text);
    dim_value out = vector(1, 2, 3, in_N);
    EXPECT_FALSE(lookup_unit(p, out));
    EXPECT_EQ(out.kind, 0);
    EXPECT_EQ(out.comp, (std::array<double, 3>{}));
    EXPECT_EQ(out.dim, in_plain);
    EXPECT_EQ(p.at, text);
}

TEST_F(unit_lookup, gives_a_user_unit_of_value_2_the_factor_one_half) {
    store_user_unit("foo", scalar(2, in_m), err.str);
    const char* text = "foo;";
    cursor p(text);
    dim_value out;
    EXPECT_TRUE(lookup_unit(p, out));
    EXPECT_EQ(out.comp[0], 0.5);
    EXPECT_EQ(out.dim, in_m);
    EXPECT_EQ(p.at, text + 3);
}

TEST_F(unit_lookup, finds_no_infinite_user_unit_and_consumes_nothing) {
    store_user_unit("foo", scalar(-std::numeric_limits<double>::infinity(), in_m), err.str);
    const char* text = "foo;";
    cursor p(text);
    dim_value out;
    EXPECT_FALSE(lookup_unit(p, out));
    EXPECT_EQ(p.at, text);
}

TEST_F(unit_lookup, matches_the_whole_token_of_a_user_unit) {
    store_user_unit("foo", scalar(2, in_m), err.str);
    for (const char* text : {"foo2", "fo", "Foo", "foo_", "fooo"}) {
        cursor p(text);
        dim_value out;
        EXPECT_FALSE(lookup_unit(p, out)) << text;
        EXPECT_EQ(p.at, text);
    }
}

TEST_F(unit_lookup, is_unit_skips_blanks_and_comments_before_the_name) {
    for (const char* text : {"m", "  m", "\tm", " \\ more\n m"}) {
        cursor p(text);
        dim_value out;
        std::string_view name;
        EXPECT_TRUE(is_unit(true, p, out, &name)) << text;
        EXPECT_EQ(name, "m");
        EXPECT_EQ(*p, '\0');
        EXPECT_EQ(out.comp[0], 1.0);
    }
}

TEST_F(unit_lookup, is_unit_restores_the_cursor_unless_it_advances) {
    const char* text = "  ft";
    cursor p(text);
    dim_value out;
    EXPECT_TRUE(is_unit(false, p, out));
    EXPECT_EQ(p.at, text);
    EXPECT_EQ(out.comp[0], 3.28083989501312);
}

TEST_F(unit_lookup, is_unit_is_false_at_a_statement_end_with_nothing_consumed) {
    for (const char* text : {"", "  ", " ; m", " # m", " \nm"}) {
        cursor p(text);
        dim_value out;
        EXPECT_FALSE(is_unit(true, p, out)) << text;
        EXPECT_EQ(p.at, text);
    }
}

TEST_F(unit_lookup, is_unit_is_false_without_a_unit_with_nothing_consumed) {
    for (const char* text : {" xyz", "2", "(m)"}) {
        cursor p(text);
        dim_value out;
        EXPECT_FALSE(is_unit(true, p, out)) << text;
        EXPECT_EQ(p.at, text);
    }
}

TEST_F(unit_lookup, is_unit_gives_the_characters_of_a_user_units_name) {
    store_user_unit("foo", scalar(4, in_s), err.str);
    const char* text = " foo ";
    cursor p(text);
    dim_value out;
    std::string_view name;
    EXPECT_TRUE(is_unit(true, p, out, &name));
    EXPECT_EQ(name, "foo");
    EXPECT_EQ(p.at, text + 4);
    EXPECT_EQ(out.comp[0], 0.25);
}

} // namespace
