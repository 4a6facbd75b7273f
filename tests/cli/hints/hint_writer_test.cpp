#include "cli/hints/hint_writer.h"
#include "cli/units/everyday_units.h"
#include "language/driver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace metrify;
using testing::HasSubstr;
using testing::Not;

/// The hints for a program, without their beginning.
std::string hints(const std::string& program, const std::string& definitions = {}) {
    std::ostringstream err;
    hint_writer writer(definitions, false, err);
    writer.explain_listing(interpret_dimensional_input_lines(program.c_str(), definitions).view());
    std::string text = err.str();
    constexpr std::string_view beginning = "metrify: hint for ";
    return text.rfind(beginning, 0) == 0 ? text.substr(beginning.size()) : text;
}

struct hinted {
    const char* name;
    const char* statement;
    const char* hint; // a part of it
};

void PrintTo(const hinted& it, std::ostream* out) {
    *out << it.statement;
}

class hint_for : public testing::TestWithParam<hinted> {};

TEST_P(hint_for, a_statement) {
    EXPECT_THAT(hints(GetParam().statement), HasSubstr(GetParam().hint));
}

constexpr hinted spellings[] = {
    {"degree_sign_of_temperatures", "20 °C; °F", "`20 degC; degF` gives 68 degF"},
    {"degree_sign_of_angles", "180°; rad", "`180 deg; rad` gives 3.14159 rad"},
    {"micro_sign", "5 µm; mil", "`µ` is written `u`: `5 um; mil` gives 0.19685 mil"},
    {"superscript", "5 m²; ft²", "`²` is written `^2`: `5 m^2; ft^2` gives 53.8196 ft^2"},
    {"negative_superscript", "5 m s⁻¹; km/hr", "`⁻¹` is written `^-1`: `5 m s^-1; km/hr` gives 18 km/hr"},
    {"middle_dot", "100 N·m; J", "`·` is written `*`: `100 N*m; J` gives 100 J"},
    {"ohm_sign", "5 Ω; ohm", "`Ω` is written `ohm`: `5 ohm; ohm` gives 5 ohm"},
    {"grouping_comma", "1,234,567 m; km", "digits are not grouped: `1234567 m; km` gives 1234.57 km"},
    {"grouping_underscore", "1_000 m; km", "digits are not grouped: `1000 m; km` gives 1 km"},
    {"decimal_comma", "3,5 m; cm", "the decimal sign is a point: `3.5 m; cm` gives 350 cm"},
    {"to", "5 ft to m", "a conversion is written `3 ft; m`, without `to`: `5 ft; m` gives 1.524 m"},
    {"to_after_semicolon", "5 ft; to m", "a request follows the semicolon directly: `5 ft; m` gives 1.524 m"},
    {"arrow", "5 ft -> m", "without an arrow: `5 ft; m` gives 1.524 m"},
    {"in_between_units", "5 ft in m", "`in` is the inch, and a conversion is written `3 ft; m`: `5 ft; m`"},
    {"double_asterisk", "2**3", "a power is written `^`: `2^3` gives 8"},
    {"fraction_with_unit", "1/4 in", "a fraction needs parentheses: `(1/4) in` gives 0.00635 m"},
    {"mixed_number", "2 1/2 in; mm", "`(2 + 1/2) in; mm` gives 63.5 mm"},
    {"feet_and_inches", "5' 11\"; cm", "feet and inches are a sum: `5 ft + 11 in; cm` gives 180.34 cm"},
    {"two_units", "5 ft 11 in; cm", "a value in two units is a sum: `5 ft + 11 in; cm` gives 180.34 cm"},
    {"power_without_caret", "9.81 m/s2; ft/s^2", "a power of a unit is written `m^2`: `9.81 m/s^2; ft/s^2`"},
    {"power_before_unit", "5 W/m2degK; W/m^2 degK", "`5 W/m^2 degK; W/m^2 degK` gives 5 W/m^2 degK"},
    {"square_prefix", "5 sqft; m^2", "squares and cubes are written `ft^2` and `ft^3`: `5 ft^2; m^2`"},
    {"cubic_word", "5 cubic feet; m^3", "`5 feet^3; m^3` gives 0.141584 m^3"},
    {"per", "60 miles per hour; m/s", "`per` is written `/`: `60 miles/hour; m/s` gives 26.8224 m/s"},
    {"dot_between_units", "5 kg.m", "units are multiplied by a blank or `*`: `5 kg m` gives 5 kg m"},
    {"hyphen_between_units", "75 ft-lb; N m", "`75 ft lbf; N m` gives 101.686 N m"},
    {"separate_degrees", "25 deg C; degF", "`25 degC; degF` gives 77 degF"},
    {"two_words", "2 light years; km", "`lightyear` is one word: `2 lightyear; km`"},
    {"american_gallon", "5 US gallon; L", "`5 gallon; L` gives 18.9271 L"},
    {"decimal_comma_with_sign", "-3,5 m; cm", "the decimal sign is a point: `-3.5 m; cm` gives -350 cm"},
    {"column_of_water", "10 inches of water; Pa",
     "a column of water is `inWater`: `10 inWater; Pa` gives 2488.4 Pa"},
    {"column_of_water_in_centimeters", "10 cm H2O; Pa", "`10 cmWater; Pa` gives 980.638 Pa"},
    {"everyday_column_of_water", "2 feet of water; Pa",
     "a column of water is `ftH2O`; `ftH2O` is one of the everyday units, which `--everyday` adds: "
     "`2 ftH2O; Pa` with --everyday gives 5978.13 Pa"},
    {"column_of_mercury", "760 mm of mercury; Pa",
     "a column of mercury is `mmHg`: `760 mmHg; Pa` gives 101325 Pa"},
    {"column_of_mercury_by_its_symbol", "2 inch Hg; Pa", "`2 inHg; Pa` gives 6753.7 Pa"},
    {"refrigeration", "2 tons of refrigeration; BTU/hr",
     "a ton of refrigeration is `TR`; `TR` is one of the everyday units, which `--everyday` adds: "
     "`2 TR; BTU/hr` with --everyday gives 24000 BTU/hr"},
    {"pound_force", "3 pounds-force; lbf", "a pound-force is `lbf`: `3 lbf; lbf` gives 3 lbf"},
    {"ratio", "50 %; 1", "`1` is no unit; without a request the value is in default units: `50 %` gives 0.5"},
    {"plain_number", "0.5 1; %", "a plain number has no units: `0.5; %` gives 50 %"},
    {"imperial_gallon", "1 UK gallon; L", "`gal_UK` is one of the everyday units"},
    {"dot_between_no_units", "3 foo.bar", "`3 foo.bar`: no unit or variable is called `foo`"},
    {"values_in_no_units", "5 foo 11 bar", "`5 foo 11 bar`: no unit or variable is called `foo`"},
    {"fraction_with_no_unit", "1/2 foo; m", "`1/2 foo; m`: no unit or variable is called `foo`"},
    {"in_between_no_units", "3 foo in bar", "`3 foo in bar`: no unit or variable is called `foo`"},
};
INSTANTIATE_TEST_SUITE_P(spelling, hint_for, testing::ValuesIn(spellings),
                         [](const auto& row) { return row.param.name; });

constexpr hinted words[] = {
    {"case", "65 MPH; km/hr", "`MPH` is written `mph`: `65 mph; km/hr` gives 104.607 km/hr"},
    {"case_of_prefix", "2 KG; g", "`KG` is written `kg`: `2 kg; g` gives 2000 g"},
    {"case_of_prefix_alone", "2 Kg; g", "`Kg` is written `kg`: `2 kg; g` gives 2000 g"},
    {"two_spellings_of_one_unit", "2 KPA; Pa", "`KPA` is written `kPa`: `2 kPa; Pa` gives 2000 Pa"},
    {"case_of_everyday_unit", "2 Kohm; ohm",
     "`Kohm` is written `kohm`; `kohm` is one of the everyday units, which `--everyday` adds: `2 kohm; ohm` "
     "with --everyday gives 2000 ohm"},
    {"everyday_unit_in_its_own_case", "2 MA; A", "`2 MA; A` with --everyday gives 2e+06 A"},
    {"two_cases_of_everyday_units", "2 MBAR; bar",
     "`MBAR` can be `mbar`, `Mbar` of the everyday units, which `--everyday` adds"},
    {"case_of_prefix_of_no_unit", "3 KFT; m", "`KFT` is `1e3 ft`: define it by `DefUnit(KFT, 1e3 ft)`"},
    {"two_cases", "5 MG; kg", "`MG` can be `Mg`, `mg`"},
    {"plural", "3 fathomes; m", "`fathomes` is written `fathom`: `3 fathom; m`"},
    {"british_spelling", "5 litres; gal", "`litres` is written `liters`: `5 liters; gal` gives 1.32086 gal"},
    {"misspelling", "5 kilometrs; mi",
     "`kilometrs`; the nearest: `kilometers`, `kilometer`: `5 kilometers; mi` gives 3.10686 mi"},
    {"variable", "speed = 3 m\nspeeed",
     "no unit or variable is called `speeed`; the nearest: `speed`: `speed` gives 3 m"},
    {"everyday_unit", "5 kWh; MJ",
     "`kWh` is one of the everyday units, which `--everyday` adds: `5 kWh; MJ` with --everyday gives 18 MJ"},
    {"everyday_letter", "90 km/h; m/s", "`h` is one of the everyday units"},
    {"prefix", "3 kiloft; m", "`kiloft` is `1e3 ft`: define it by `DefUnit(kiloft, 1e3 ft)`"},
    {"newton_meter", "5 Nm; J", "`Nm` is written `N m`: `5 N m; J` gives 5 J"},
    {"kilonewton_meter", "5 kNm; J", "`5 kN m; J` gives 5000 J"},
    {"newton_millimeter", "3 Nmm; J", "`3 N mm; J` gives 0.003 J"},
    {"watt_second", "5 Ws; J", "`5 W s; J` gives 5 J"},
    {"pascal_second", "2 Pas; poise", "`2 Pa s; poise` gives 20 poise"},
    {"food_calorie", "200 Cal; kcal", "`200 kcal; kcal` gives 200 kcal"},
    {"nautical_mile", "10 NM; km", "`10 nmi; km` with --everyday gives 18.52 km"},
    {"microgram", "500 mcg; mg", "`500 ug; mg` gives 0.5 mg"},
    {"poise", "3 P; Pa s", "`3 poise; Pa s` gives 0.3 Pa s"},
    {"day", "3 d; hr", "`d` is written `day`: `3 day; hr` gives 72 hr"},
    {"celsius", "20 celsius; fahrenheit", "`20 degC; degF` gives 68 degF"},
    {"money", "3 EUR", "`EUR` is money, for which the language has no unit"},
    {"money_by_its_sign", "3 €", "`3 €`: `€` is money, for which the language has no unit"},
    {"price", "12 $/m^2; $/ft^2",
     "`$` is money, for which the language has no unit; it cancels in a conversion"},
    {"information", "10 MB; bit", "as a number: `DefUnit(MB, 8e+06)`"},
    {"logarithm", "20 dB", "`dB` is logarithmic"},
    {"light", "500 lx", "`lx` measures light"},
    {"gauge_pressure", "32 psig; bar", "`psig` is a pressure above that of the atmosphere"},
    {"unit_without_number", "ft + 3", "`ft` is a unit and follows a number, as in `1 ft`"},
    {"variable_name", "ft = 3", "`ft` is a unit, and a variable needs another name"},
    {"function", "sine(3)",
     "no function is called `sine`; the nearest: `sin`, `sinh`: `sin(3)` gives 0.14112"},
    {"unknown_word", "3 xyzzy", "no unit or variable is called `xyzzy`; `metrify units TEXT` searches"},
    {"unknown_letter_after_a_prefix", "3 kq; m", "no unit or variable is called `kq`; `metrify units TEXT`"},
    {"other_name_of_a_function", "sqr(4)", "`sqr` is written `sqrt`: `sqrt(4)` gives 2"},
};
INSTANTIATE_TEST_SUITE_P(word, hint_for, testing::ValuesIn(words),
                         [](const auto& row) { return row.param.name; });

constexpr hinted mismatches[] = {
    {"pound_of_mass", "180 lb; kg", "`lb` is a force and `lbm` the mass: `180 lbm; kg` gives 81.6466 kg"},
    {"ounce_of_mass", "3 oz; g", "`oz` is a force and `ozm` the mass: `3 ozm; g` gives 85.0486 g"},
    {"kilogram_of_force", "5 kg; N", "`kg` is a mass and `kgf` the force: `5 kgf; N` gives 49.0333 N"},
    {"letters_for_temperatures", "-40 C; F",
     "`C` is the coulomb and `F` the farad; temperatures are `degC` and `degF`: `-40 degC; degF` gives -40 "
     "degF"},
    {"fuel_consumption", "6 L/100 km; mi/gal",
     "one of the two is the reciprocal of the other: `1/(6 L/100 km); mi/gal` gives 39.2024 mi/gal"},
    {"fuel_economy", "30 mi/gal; L/100 km", "`100 km/(30 mi/gal); L` gives 7.84049 L"},
    {"request_with_number", "0.08 L/km; L/100 km", "`100 km*(0.08 L/km); L` gives 8 L"},
    {"period", "5 s; Hz", "`1/(5 s); Hz` gives 0.2 Hz"},
    {"other_dimension", "x = 3 ft\nx; kg", "the value is a length (`m`) and `kg` a mass (`kg`)"},
    {"dimension_without_a_name", "3 ft^5; s", "the value is in `m^5` and `s` a time (`s`)"},
    {"revolutions", "3000 rpm; Hz", "revolutions per second are `rev/s`: `3000 rpm; rev/s` gives 50 rev/s"},
    {"temperature_difference", "20 degC - 10 degC; degC", "`20 degC - 10 degC; degCdiff` gives 10 degCdiff"},
    {"temperature_sum", "20 degC + 5 degC; degC", "`20 degC + 5 degCdiff; degC` gives 25 degC"},
};
INSTANTIATE_TEST_SUITE_P(mismatch, hint_for, testing::ValuesIn(mismatches),
                         [](const auto& row) { return row.param.name; });

TEST(hints, are_none_for_statements_as_the_language_wants_them) {
    EXPECT_EQ(hints("x = 3 ft\nx; in\n5 ft lbf in / s\n(1/4) in; mm\n[1, 2, 3] m\natan2(1,2)\n# 5 ft to m\n"
                    "1000 kg/m^3\n20 degC; degF\n20 degC - 10 degC; degCdiff\nMKS(ft)\n5 lb in\n"),
              "");
}

TEST(hints, name_the_statement_and_the_correction_on_one_line) {
    EXPECT_EQ(hints("5 ft to m"),
              "`5 ft to m`: a conversion is written `3 ft; m`, without `to`: `5 ft; m` gives 1.524 m\n");
}

TEST(hints, do_not_take_a_molar_concentration_for_a_length) {
    EXPECT_EQ(hints("2 M"), "`2 M`: `M` is no unit; `m` is the meter, and a molar concentration is written "
                            "`mol/L`\n");
}

TEST(hints, do_not_take_a_molar_concentration_with_a_prefix_for_a_length) {
    EXPECT_EQ(hints("2 uM"), "`2 uM`: `uM` is no unit; a molar concentration is written `1e-6 mol/L`\n");
}

TEST(hints, do_not_add_a_prefix_to_a_prefix) {
    for (const char* statement : {"3 kkm", "3 mmm", "5 ukg"})
        EXPECT_THAT(hints(statement), Not(HasSubstr("DefUnit"))) << statement;
    EXPECT_THAT(hints("3 kmin"), HasSubstr("`kmin` is `1e3 min`"));
}

TEST(hints, know_the_user_units_of_the_program) {
    EXPECT_THAT(hints("5 pacee; m", "DefUnit(pace, 0.75 m)"), HasSubstr("`5 pace; m` gives 3.75 m"));
    EXPECT_THAT(hints("DefUnit(pace, 0.75 m)\n5 pacee; m"), HasSubstr("`5 pace; m` gives 3.75 m"));
}

TEST(hints, do_not_take_a_user_unit_for_the_square_or_cube_of_another) {
    EXPECT_THAT(hints("DefUnit(sqm, 2 m)\n5 sqm; m^2"), Not(HasSubstr("squares and cubes")));
    EXPECT_THAT(hints("DefUnit(cuft, 2 ft)\n5 cuft; ft^3"), Not(HasSubstr("squares and cubes")));
}

TEST(hints, know_the_everyday_units_if_they_are_there) {
    EXPECT_THAT(hints("5 KWHR; MJ", everyday_units()),
                HasSubstr("`KWHR` is written `kWhr`: `5 kWhr; MJ` gives 18 MJ"));
}

TEST(hints, know_the_name_of_the_latest_result) {
    std::ostringstream err;
    hint_writer writer("", false, err, "ans");
    writer.explain_listing("[  1 ] 3 ft; cm; m\n        = 91.44 cm = 0.9144 m\n\n");
    writer.explain_listing("[  2 ] ans to km\n       ERROR: 'to' undefined.\n\n");
    EXPECT_THAT(err.str(), HasSubstr("`ans; km` gives 0.0009144 km\n"));
}

TEST(hints, find_the_statements_of_a_listing_at_the_beginning_of_lines) {
    EXPECT_EQ(hints("y[  1] = 3 metrs; m\n3 metrs; m"),
              "`y[  1] = 3 metrs; m`: no unit or variable is called `metrs`; the nearest: `meters`: "
              "`y[  1] = 3 meters; m` gives [ 3 , 0 , 0 ] m\n"
              "metrify: hint for `3 metrs; m`: no unit or variable is called `metrs`; the nearest: `meters`: "
              "`3 meters; m` gives 3 m\n");
    std::ostringstream err;
    hint_writer("", false, err).explain_listing("x[  1 ] = 2\n[  1 ] 3 metrs; m\n ERROR");
    EXPECT_EQ(err.str(),
              "metrify: hint for `3 metrs; m`: no unit or variable is called `metrs`; the nearest: `meters`: "
              "`3 meters; m` gives 3 m\n");
}

TEST(hints, stop_after_twenty_statements) {
    std::string program;
    for (int i = 0; i < 30; ++i)
        program += "3 ft to m\n";
    const std::string text = hints(program);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 20);
}

// A line that solves could take long once more.
TEST(hints, do_not_run_statements_that_solve) {
    const std::string program = "begin\ny = (x - 2)^2\nend\nx = 1\nz = fmin(y, x) to m\n";
    EXPECT_THAT(hints(program), Not(HasSubstr("gives")));
}

TEST(hints, of_a_conversion_show_the_command) {
    std::ostringstream err;
    hint_writer("", false, err).explain_conversion("20", "°C", "°F", conversion_state::failed);
    EXPECT_EQ(err.str(),
              "metrify: hint: `°C` is written `degC`; `°F` is written `degF`: `metrify convert 20 degC degF` "
              "gives 68 degF\n");
}

TEST(hints, of_a_conversion_quote_units_for_the_shell) {
    std::ostringstream err;
    hint_writer("", false, err).explain_conversion("5' 11\"", "", "cm", conversion_state::not_a_number);
    EXPECT_THAT(err.str(), HasSubstr("`metrify convert 5 'ft + 11 in' cm` gives 180.34 cm"));
}

TEST(hints, of_a_conversion_show_a_line_if_no_number_begins_it) {
    const auto hint = [](const char* val) {
        std::ostringstream err;
        hint_writer("", false, err).explain_conversion(val, "ft", "m", conversion_state::not_a_number);
        return err.str();
    };
    EXPECT_EQ(hint("x = 3,5"),
              "metrify: hint: the decimal sign is a point: the line `x = 3.5 ft; m` gives 1.0668 m\n");
    EXPECT_EQ(hint("e"),
              "metrify: hint: `e` is written `exp(1)`: the line `exp(1) ft; m` gives 0.828532 m\n");
}

TEST(hints, of_a_conversion_are_none_if_the_correction_has_no_value) {
    for (const char* val : {"DefUnit(a, 3 ftt)", "# 3 metrs"}) {
        std::ostringstream err;
        hint_writer("", false, err).explain_conversion(val, "", "", conversion_state::not_a_number);
        EXPECT_EQ(err.str(), "");
    }
}

TEST(hints, are_none_for_a_conversion_as_long_as_a_text) {
    const std::string longest = "3,5" + std::string(491, ' '); // with the blank, the unit and the request 500
    for (const std::string& val : {longest, longest + ' '}) {
        std::ostringstream err;
        hint_writer("", false, err).explain_conversion(val, "ft", "m", conversion_state::not_a_number);
        EXPECT_EQ(err.str().empty(), val != longest);
    }
}

TEST(hints, of_a_conversion_add_the_option_for_everyday_units) {
    std::ostringstream err;
    hint_writer("", false, err).explain_conversion("5", "kWh", "MJ", conversion_state::failed);
    EXPECT_THAT(err.str(), HasSubstr("`metrify convert --everyday 5 kWh MJ` gives 18 MJ\n"));
}

TEST(hints, of_a_conversion_tell_that_the_shell_takes_an_arrow) {
    std::ostringstream err;
    hint_writer("", false, err).explain_conversion("3.5", "ft", "-", conversion_state::failed);
    EXPECT_EQ(err.str(),
              "metrify: hint: the shell takes the `>` of `->` for a redirection to a file; the units "
              "follow each other, as in `metrify 3.5 ft m`\n");
}

TEST(hints, of_a_conversion_separate_the_number_from_its_units) {
    const auto hint = [](const char* val, const char* in_units, const char* out_units) {
        std::ostringstream err;
        hint_writer("", false, err)
            .explain_conversion(val, in_units, out_units, conversion_state::not_a_number);
        return err.str();
    };
    EXPECT_EQ(hint("5ft", "m", ""), "metrify: hint: a blank separates a number from its units: "
                                    "`metrify convert 5 ft m` gives 1.524 m\n");
    EXPECT_EQ(hint("5ft", "in", "m"),
              "metrify: hint: a blank separates a number from its units; the units follow each other without "
              "`in`, which is the inch: `metrify convert 5 ft m` gives 1.524 m\n");
    EXPECT_EQ(hint("5xyzzy", "m", ""), "");
    EXPECT_EQ(hint("pi()", "m", "ft"), "");
}

// The hint for words that are too many for a conversion.
std::string hint_for_words(const std::vector<std::string>& typed, bool has_everyday_units = false) {
    std::ostringstream err;
    hint_writer(has_everyday_units ? everyday_units() : "", has_everyday_units, err).explain_words(typed);
    return err.str();
}

TEST(hints, of_words_leave_out_the_one_between_the_units) {
    const std::string answer = ": `metrify convert 3.5 ft m` gives 1.0668 m\n";
    for (const char* word : {"to", "into", "as", "->", "=>", "→"})
        EXPECT_EQ(hint_for_words({"3.5", "ft", word, "m"}),
                  "metrify: hint: the units follow each other without `" + std::string(word) + "`" + answer);
    EXPECT_EQ(hint_for_words({"3.5", "ft", "in", "m"}),
              "metrify: hint: the units follow each other without `in`, which is the inch" + answer);
}

TEST(hints, of_words_take_the_inch_for_a_unit_where_it_is_one) {
    EXPECT_EQ(hint_for_words({"3", "lbf", "in", "J"}),
              "metrify: hint: units of several words are in quotes: `metrify convert 3 'lbf in' J` gives "
              "0.338954 J\n");
    EXPECT_THAT(hint_for_words({"5", "ft", "11", "in", "in", "cm"}),
                HasSubstr("`metrify convert 5 'ft + 11 in' cm` gives 180.34 cm\n"));
}

TEST(hints, of_words_quote_units_of_several_words) {
    EXPECT_EQ(
        hint_for_words({"2.5", "kg", "m", "/", "s^2", "N"}),
        "metrify: hint: units of several words are in quotes: `metrify convert 2.5 'kg m / s^2' N` gives "
        "2.5 N\n");
    EXPECT_EQ(
        hint_for_words({"100", "J", "to", "ft", "lbf"}),
        "metrify: hint: the units follow each other without `to`; units of several words are in quotes: "
        "`metrify convert 100 J 'ft lbf'` gives 73.7562 ft lbf\n");
}

TEST(hints, of_words_correct_the_units_as_well) {
    EXPECT_EQ(hint_for_words({"-3,5", "ft", "to", "m"}),
              "metrify: hint: the units follow each other without `to`; the decimal sign is a point: "
              "`metrify convert -3.5 ft m` gives -1.0668 m\n");
    EXPECT_THAT(hint_for_words({"5", "kWh", "to", "MJ"}),
                HasSubstr("`metrify convert --everyday 5 kWh MJ` gives 18 MJ\n"));
    EXPECT_THAT(hint_for_words({"5", "kWh", "to", "MJ"}, true),
                HasSubstr("`metrify convert --everyday 5 kWh MJ` gives 18 MJ\n"));
}

TEST(hints, of_words_that_no_correction_helps_say_what_is_wrong) {
    EXPECT_EQ(
        hint_for_words({"3.5", "ft", "to", "kg"}),
        "metrify: hint: the units follow each other without `to`; the value is a length (`m`) and `kg` a "
        "mass (`kg`)\n");
    EXPECT_EQ(hint_for_words({"3"}), "");
}

// The hint for columns between units that can't be converted.
std::string hint_for_columns(const char* in_units, const char* out_units) {
    std::ostringstream err;
    hint_writer("", false, err).explain_columns(in_units, out_units);
    return err.str();
}

TEST(hints, of_columns_show_the_options) {
    EXPECT_EQ(hint_for_columns("kWh", "J"),
              "metrify: hint: `kWh` is one of the everyday units, which `--everyday` adds: `metrify columns "
              "--everyday --from kWh --to J`\n");
    EXPECT_EQ(
        hint_for_columns("lb", "kg m/m"),
        "metrify: hint: `lb` is a force and `lbm` the mass: `metrify columns --from lbm --to 'kg m/m'`\n");
    EXPECT_EQ(hint_for_columns("metrs", ""),
              "metrify: hint: no unit or variable is called `metrs`; the nearest: `meters`: `metrify columns "
              "--from meters`\n");
}

TEST(hints, of_columns_are_none_for_long_texts_and_units_that_fit) {
    EXPECT_EQ(hint_for_columns(("kWh" + std::string(500, ' ') + "*1").c_str(), "J"), "");
    EXPECT_EQ(hint_for_columns("ft", "m"), "");
}

TEST(hints, of_columns_have_no_command_if_the_numbers_would_change) {
    EXPECT_EQ(hint_for_columns("km/L", "L/km"),
              "metrify: hint: one of the two is the reciprocal of the other\n");
}

TEST(hints, of_a_conversion_that_is_misread_do_not_need_an_error) {
    std::ostringstream err;
    hint_writer("", false, err).explain_conversion("3000", "rpm", "Hz", conversion_state::converted);
    EXPECT_THAT(err.str(), HasSubstr("`metrify convert 3000 rpm rev/s` gives 50 rev/s\n"));
}

} // namespace
