#include "cli/commands.h"
#include "cli/lookup/unit_document.h"
#include "cli/units/everyday_units.h"

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>

namespace {

using namespace metrify;
using testing::HasSubstr;
using testing::Not;

struct found_list {
    int status = 0;
    std::string out = {};
    std::string err = {};
};

found_list units(const std::string& text, const std::string& like = {}, const std::string& definitions = {}) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = units_command({text, like}, out, err, {definitions});
    return {status, out.str(), err.str()};
}

found_list functions(const std::string& text) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = functions_command(text, out, err);
    return {status, out.str(), err.str()};
}

std::ptrdiff_t lines(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

constexpr const char* heading = "unit                  value of one  in base units       quantity\n";

TEST(units_command, has_a_heading_and_lists_every_unit) {
    const found_list all = units("");
    EXPECT_EQ(all.out.find(heading), 0U);
    EXPECT_EQ(lines(all.out), 1 + 375);
    EXPECT_EQ(all.status, 0);
}

TEST(units_command, shows_the_value_of_one_unit_in_base_units) {
    EXPECT_EQ(units("boardfoot").out,
              std::string(heading) + "boardfoot             0.00235974    m^3                 volume\n");
    EXPECT_THAT(units("psf").out,
                HasSubstr("psf                   47.8803       kg / m s^2          pressure\n"));
}

TEST(units_command, shows_the_zero_of_a_temperature_scale) {
    EXPECT_THAT(units("degC").out, HasSubstr("degK                temperature, 0 degC = 273.15 degK\n"));
    EXPECT_THAT(units("degF").out, HasSubstr("degK                temperature, 0 degF = 255.372 degK\n"));
    EXPECT_THAT(units("degR").out, HasSubstr("degK                temperature\n"));
}

TEST(units_command, finds_a_part_of_a_name_in_any_case) {
    EXPECT_EQ(lines(units("FATHOM").out), 3);
    EXPECT_EQ(units("FATHOM").out, units("fathom").out);
}

TEST(units_command, finds_what_people_call_a_quantity_in_any_case) {
    const found_list found = units("Pressure");
    EXPECT_EQ(lines(found.out), 1 + 31);
    EXPECT_THAT(found.out, HasSubstr("\npsi "));
    EXPECT_THAT(found.out, Not(HasSubstr("\nft ")));
    EXPECT_EQ(units("press").out, found.out);
}

TEST(units_command, finds_units_of_the_dimension_of_an_expression) {
    EXPECT_EQ(units("", "N/mm^2").out, units("pressure").out);
    EXPECT_EQ(units("", "psi").status, 0);
}

TEST(units_command, says_that_no_unit_has_a_dimension) {
    const found_list none = units("", "m^7");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err, "metrify: no unit has the dimension of `m^7`, m^7\n");
    EXPECT_EQ(units("", "fathon").err,
              "metrify: no unit or quantity is called `fathon`; the nearest: `fathom`, `fathoms`\n");
}

TEST(units_command, shows_the_value_of_a_unit_expression) {
    EXPECT_EQ(units("kW hr").out,
              std::string(heading) + "kW hr                 3.6e+06       kg m^2 / s^2        energy\n");
}

TEST(units_command, says_what_is_nearest_if_nothing_is_found) {
    const found_list none = units("presure");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.out, "");
    EXPECT_EQ(none.err, "metrify: no unit or quantity is called `presure`; the nearest: `pressure`\n");
    EXPECT_EQ(units("xyzzy").err, "metrify: no unit or quantity is called `xyzzy`\n");
}

TEST(units_command, shows_the_product_for_a_quantity_that_has_no_single_unit) {
    const found_list none = units("thermal conductivity");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err, "metrify: `thermal conductivity` has no single unit; write `W/m degK`\n");
}

TEST(units_command, refers_to_the_everyday_units_that_would_be_found) {
    EXPECT_THAT(units("fuel economy").err,
                HasSubstr("`metrify units --everyday 'fuel economy'` finds some\n"));
    EXPECT_THAT(units("parsec").err, HasSubstr("`metrify units --everyday parsec` finds some\n"));
}

TEST(units_command, lists_user_units_with_the_others) {
    EXPECT_EQ(units("parsec", {}, "DefUnit(parsec, 3e16 m)").out,
              std::string(heading) + "parsec                3e+16         m                   length\n");
}

TEST(functions_command, says_what_is_nearest_if_nothing_is_found) {
    const found_list none = functions("besel");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.out, "");
    EXPECT_THAT(none.err, HasSubstr("no function is called or described by `besel`; the nearest: `Bessel"));
    EXPECT_EQ(functions("xyzzy").err, "metrify: no function is called or described by `xyzzy`\n");
}

TEST(functions_command, finds_a_chapter_by_its_title) {
    EXPECT_THAT(functions("trigonometry").out, HasSubstr("\nsin(x) "));
    EXPECT_EQ(functions("trigonometry").status, 0);
}

TEST(unit_document, is_in_the_documents_unchanged) {
    std::ifstream in(METRIFY_SOURCE_DIR "/docs/units.md", std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), unit_document());
}

// The part of the document from a heading to the next one of its rank.
std::string section(const std::string& title) {
    const std::string text = unit_document();
    const std::size_t begin = text.find("\n" + title + "\n");
    EXPECT_NE(begin, std::string::npos) << title;
    return text.substr(begin, text.find("\n## ", begin + 1) - begin);
}

std::size_t rows_of(const std::string& text) {
    std::size_t rows = 0;
    for (std::size_t at = text.find("\n| `"); at != std::string::npos; at = text.find("\n| `", at + 1))
        ++rows;
    return rows;
}

TEST(unit_document, has_all_units) {
    const std::string table = section("## All units");
    EXPECT_EQ(rows_of(table), 375U);
    EXPECT_THAT(table, HasSubstr("\n| `ft` | 0.3048 |\n"));
}

TEST(unit_document, has_all_everyday_units_with_value_dimension_and_source) {
    const std::string table = section("## All everyday units");
    const std::string& file = everyday_units();
    std::size_t definitions = 0;
    for (std::size_t at = file.find("\nDefUnit("); at != std::string::npos;
         at = file.find("\nDefUnit(", at + 1))
        ++definitions;
    EXPECT_EQ(rows_of(table), definitions);
    EXPECT_THAT(
        table,
        HasSubstr("\n### Energy\n\n| unit | value of one | in base units | source |\n|---|---|---|---|\n"
                  "| `Wh` | 3600 | `kg m^2 / s^2` | SI |\n"));
    EXPECT_THAT(table, HasSubstr("\n| `kWh` | 3.6e+06 | `kg m^2 / s^2` | SI |\n"));
    EXPECT_THAT(
        table,
        HasSubstr(
            "\n| `nmi` | 1852 | `m` | SI; `NauticalMile` of the vocabulary is three times as long |\n"));
    EXPECT_THAT(table, HasSubstr("\n| `kwh` | 3.6e+06 | `kg m^2 / s^2` | `1 kWh` |\n"));
    EXPECT_THAT(table, HasSubstr("\n| `bpm` | 0.0166667 | `/ s` | per minute |\n"));
    EXPECT_THAT(table, HasSubstr("\n| `dozen` | 12 | `1` | `12` |\n"));
    EXPECT_THAT(table, HasSubstr("\n### Temperature\n"));
}

TEST(unit_document, explains_the_sources_of_the_everyday_units) {
    EXPECT_THAT(section("## All everyday units"),
                HasSubstr("\n- WMA: Weights and Measures Act 1985 (United Kingdom), schedule 1\n"));
}

} // namespace
