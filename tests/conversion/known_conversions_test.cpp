#include "conversion/conversion.h"
#include "conversion/known_conversions.h"
#include "machine/calculator.h"
#include "tests/allocations.h"
#include "tests/testing.h"
#include "units/unit_table.h"

#include <array>
#include <bit>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <span>
#include <string>
#include <thread>

namespace {

using namespace metrify;

/// The two cells, bit by bit.
struct shown_cells {
    conversion_outcome outcome;
    std::uint64_t number;
    std::string text;

    explicit shown_cells(const conversion& cells)
        : outcome(cells.outcome), number(std::bit_cast<std::uint64_t>(cells.number)), text(cells.text) {}
    friend bool operator==(const shown_cells&, const shown_cells&) = default;
};

/// True if the first conversion and the repeated one give the cells that the line of the language gives.
bool agrees_with_the_line(double val, std::string_view in_units, std::string_view out_units) {
    const shown_cells expected(convert_units_by_line(val, in_units, out_units));
    const conversion first = convert_units(val, in_units, out_units);
    return shown_cells(first) == expected &&
           (first.answer.has_value() || shown_cells(convert_units(val, in_units, out_units)) == expected);
}

bool is_computed_without_a_line(std::string_view in_units, std::string_view out_units) {
    convert_units(1.0, in_units, out_units);
    return !convert_units(1.0, in_units, out_units).answer.has_value();
}

constexpr std::array<double, 11> values = {3.5,     1234567.8, -40.0,  0.0,  1.0 / 3.0, 299792458.0,
                                           -1e-300, 5e-324,    1e+300, 1e-5, -0.0};

TEST(known_conversions, agree_with_the_line_for_all_pairs_of_units) {
    const std::span<const unit_entry> units = all_units();
    // The sanitizers are slow, and there are 140625 pairs.
    const std::size_t step = is_sanitized ? 11 : 1;
    for (std::size_t pair = 0; pair < units.size() * units.size(); pair += step) {
        const std::string_view in = units[pair / units.size()].name;
        const std::string_view out = units[pair % units.size()].name;
        ASSERT_TRUE(agrees_with_the_line(values[pair / step % values.size()], in, out))
            << in << " to " << out;
    }
}
TEST(known_conversions, agree_with_the_line_for_all_values) {
    for (const double val : values)
        for (const char* in : {"ft", "degC", "degF", "Gpsi", "lightyear", "kg m / s^2"})
            for (const char* out : {"m", "degF", "degC", "mpa", "cm", "lbf"})
                EXPECT_TRUE(agrees_with_the_line(val, in, out)) << val << " " << in << " to " << out;
}
TEST(known_conversions, agree_with_the_line_for_results_out_of_range) {
    EXPECT_TRUE(agrees_with_the_line(1e300, "km^10", "m^10"));
    EXPECT_TRUE(agrees_with_the_line(-1e300, "km^10", "m^10"));
    EXPECT_TRUE(agrees_with_the_line(1e-300, "m^10", "km^10"));
}

TEST(known_conversions, are_those_between_plain_units) {
    for (const std::array<const char*, 2>& units :
         std::initializer_list<std::array<const char*, 2>>{{"ft", "m"},
                                                           {"kg m / s^2", "lbf"},
                                                           {"", "rad"},
                                                           {" ft ", "\tm "},
                                                           {"m^(1/2)", "ft^0.5"},
                                                           {"degC", "degF"},
                                                           {"%", "%"},
                                                           {"*m", "m"},
                                                           {"/ s", "Hz"},
                                                           {"m *", "m /"}})
        EXPECT_TRUE(is_computed_without_a_line(units[0], units[1]) &&
                    agrees_with_the_line(3.5, units[0], units[1]))
            << units[0] << " to " << units[1];
}
TEST(known_conversions, leave_everything_else_to_the_line) {
    for (const std::array<const char*, 2>& units :
         std::initializer_list<std::array<const char*, 2>>{{"ft", ""},
                                                           {"ft", " "},
                                                           {"ft", "MKS"},
                                                           {"ft", "cgs"},
                                                           {"ft", "m; cm"},
                                                           {"ft", "m # length"},
                                                           {"ft # length", "cm"},
                                                           {"ft \\ x\n", "m"},
                                                           {"ft", "cm=8&"},
                                                           {"ft", "cm &"},
                                                           {"ft", "m xyz"},
                                                           {"ft", "ERROR"},
                                                           {"ft # ERROR: mine", "m"},
                                                           {"xyz", "m"},
                                                           {"ft", "xyz"},
                                                           {"ft", "kg"},
                                                           {"* [1, 2, 3] m", ""},
                                                           {"ft + 1 ft", "ft"},
                                                           {"* 2 ft", "m"},
                                                           {"^2 ft", "m"},
                                                           {"(m/s)^2", "m^2/s^2"},
                                                           {"m\nx = 2 m", "m"},
                                                           {"m^", "m"},
                                                           {"m", "m^"},
                                                           {"m", "m (s"},
                                                           {"m)", "m"},
                                                           {"/", "m"},
                                                           {"mm^13", "m^13"},
                                                           {"km^200", "m^200"},
                                                           {"ft\r", "m"},
                                                           {"ft", "m,"},
                                                           {"ft", "m "
                                                                  "m [1]"}})
        EXPECT_TRUE(!is_computed_without_a_line(units[0], units[1]) &&
                    agrees_with_the_line(3.5, units[0], units[1]))
            << units[0] << " to " << units[1];
}
TEST(known_conversions, have_texts_of_a_limited_length) {
    const std::string longer = "m" + std::string(79, ' ');
    for (std::size_t length = 70; length < longer.size(); ++length)
        EXPECT_TRUE(agrees_with_the_line(3.5, longer.substr(0, length), "m")) << length;
    EXPECT_TRUE(is_computed_without_a_line(longer.substr(0, 77), "m"));
    EXPECT_FALSE(is_computed_without_a_line(longer.substr(0, 78), "m"));
}
TEST(known_conversions, tell_texts_apart_by_where_the_first_ends) {
    known_conversion known;
    ASSERT_TRUE(known.prepare("m", "mm"));
    EXPECT_TRUE(known.is_between("m", "mm"));
    EXPECT_FALSE(known.is_between("mm", "m"));
    EXPECT_FALSE(known.is_between("", "mmm"));
}
TEST(known_conversions, are_kept_for_twenty_pairs_at_once) {
    // A new thread has an empty table.
    std::jthread([] {
        std::array<const known_conversion*, 20> first = {};
        for (int run = 0; run < 2; ++run)
            for (std::size_t i = 0; i < first.size(); ++i) {
                const std::string_view unit = all_units()[i].name;
                const known_conversion* const known = find_known_conversion(unit, unit);
                ASSERT_NE(known, nullptr) << unit;
                if (run == 0)
                    first[i] = known;
                EXPECT_EQ(known, first[i]) << unit;
                EXPECT_EQ(known->unit_cell(), std::string(unit) + "\n\n");
            }
    }).join();
}

TEST(known_conversions, do_not_use_units_of_a_program) {
    const auto own = std::make_unique<calculator>();
    const calculator_scope scope(*own);
    run_further_lines("DefUnit(ell, 18 in)");
    EXPECT_EQ(convert_units(1.0, "ell", "m").text, "ERROR: 'ell' undefined.\n\n");
}
TEST(known_conversions, leave_a_pending_report_to_the_line) {
    constexpr const char* program = "x = 2\nbegin\ny = x^2 + 1\nend\nsolve(y, x)";
    convert_units(3.5, "ft", "m");
    interpret_dimensional_input_lines(program);
    const shown_cells reported(convert_units(3.5, "ft", "m"));
    EXPECT_NE(reported.text, "m\n\n");
    interpret_dimensional_input_lines(program);
    EXPECT_EQ(reported, shown_cells(convert_units_by_line(3.5, "ft", "m")));
    EXPECT_EQ(convert_units(3.5, "ft", "m").text, "m\n\n");
}

TEST(known_conversions, allocate_nothing_when_they_are_repeated) {
    if (is_sanitized)
        GTEST_SKIP() << "the allocator is another one";
    convert_units(3.5, "ft", "m");
    convert_units(3.5, "kg m / s^2", "lbf");
    const std::size_t before = test::allocations();
    EXPECT_EQ(convert_units(7.0, "ft", "m").number, 2.1336);
    EXPECT_EQ(convert_units(2.0, "kg m / s^2", "lbf").number, 0.449618);
    EXPECT_EQ(test::allocations(), before);
}

} // namespace
