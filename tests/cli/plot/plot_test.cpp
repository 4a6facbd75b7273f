#include "cli/plot/gnuplot.h"
#include "cli/plot/plot_command.h"
#include "cli/plot/plot_range.h"
#include "cli/plot/plot_sampling.h"
#include "cli/plot/text_plot.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr double gap = std::numeric_limits<double>::quiet_NaN();

const std::string square = "x = 1 m\nbegin\ny = x^2\nz = 3*x\nend\n";

plot_range range(const char* text) {
    plot_range read;
    EXPECT_EQ(read.read(text), "") << text;
    return read;
}

plot_data sampled(const std::string& program, const char* over, const std::vector<plot_request>& of,
                  std::size_t points) {
    plot_data data;
    EXPECT_EQ(sample_block(program, {}, range(over), of, points, data), "");
    return data;
}

std::string refusal(const std::string& program, const char* over, const char* of) {
    plot_data data;
    return sample_block(program, {}, range(over), {plot_request(of)}, 3, data);
}

TEST(plot_range, has_a_variable_two_numbers_and_units) {
    const plot_range it = range(" x=-1.5 ..2e3 kg m / s^2 ");
    EXPECT_EQ(it.variable, "x");
    EXPECT_EQ(it.from, -1.5);
    EXPECT_EQ(it.to, 2000.0);
    EXPECT_EQ(it.units, "kg m / s^2");
    EXPECT_EQ(range("x = 0..10").units, "");
    EXPECT_EQ(range("x = 1...5").to, 0.5);
}
TEST(plot_range, is_nothing_else_for_a_reason) {
    const auto reason = [](const char* text) { return plot_range().read(text); };
    for (const char* text : {"", "x", "0 .. 1"})
        EXPECT_EQ(reason(text), "there is no '=' after a variable") << text;
    EXPECT_EQ(reason("x = 1"), "there is no '..' between two numbers");
    EXPECT_EQ(reason(" = 0 .. 1"), "there is no variable before '='");
    EXPECT_EQ(reason("x = .. 1"), "'' before '..' is no number; units follow the second number");
    EXPECT_EQ(reason("x = 0 m .. 1 m"), "'0 m' before '..' is no number; units follow the second number");
    EXPECT_EQ(reason("x = 0 .."), "'' after '..' does not begin with a number");
    EXPECT_EQ(reason("x = 0 .. m"), "'m' after '..' does not begin with a number");
    EXPECT_EQ(reason("x = 1 .. 1.0 m"), "both ends are 1");
    for (const char* text : {"x = 0 .. 1e999", "x = -1e999 .. 0", "x = -1e308 .. 1e308"})
        EXPECT_EQ(reason(text), "it is too large") << text;
}
TEST(plot_request, has_a_variable_and_perhaps_units) {
    EXPECT_EQ(plot_request(" y ").variable, "y");
    EXPECT_EQ(plot_request("y").units, "");
    EXPECT_EQ(plot_request("y ; ft ").variable, "y");
    EXPECT_EQ(plot_request("y ; ft ").units, "ft");
}

TEST(plotted_block, is_computed_at_equal_distances) {
    const plot_data data = sampled(square, "x = 0 .. 4 m", {plot_request("y")}, 3);
    EXPECT_EQ(data.x.label, "x [m]");
    EXPECT_THAT(data.x.values, ElementsAre(0.0, 2.0, 4.0));
    EXPECT_EQ(data.y[0].label, "y [m^2]");
    EXPECT_THAT(data.y[0].values, ElementsAre(0.0, 4.0, 16.0));
}
TEST(plotted_block, is_shown_in_the_units_that_are_asked_for) {
    const plot_data data =
        sampled(square, "x = 0 .. 200 cm", {plot_request("y; cm^2"), plot_request("z")}, 2);
    EXPECT_EQ(data.x.label, "x [cm]");
    EXPECT_EQ(data.y[0].label, "y [cm^2]");
    EXPECT_DOUBLE_EQ(data.y[0].values[1], 40000.0);
    EXPECT_EQ(data.y[1].label, "z [m]");
    EXPECT_DOUBLE_EQ(data.y[1].values[1], 6.0);
    EXPECT_EQ(data.y_label(), "y [cm^2], z [m]");
}
TEST(plotted_block, can_be_about_plain_numbers) {
    const plot_data data = sampled("x = 1\nbegin\ny = 2*x\nend\n", "x = 0 .. 1", {plot_request("y")}, 2);
    EXPECT_EQ(data.x.label, "x");
    EXPECT_EQ(data.y[0].label, "y");
    EXPECT_THAT(data.y[0].values, ElementsAre(0.0, 2.0));
}
TEST(plotted_block, has_a_gap_where_it_cannot_be_computed) {
    const plot_data data = sampled("x = 1\nbegin\ny = sqrt(x)\nend\n", "x = -1 .. 1", {plot_request("y")}, 3);
    EXPECT_TRUE(std::isnan(data.y[0].values[0]));
    EXPECT_EQ(data.y[0].values[2], 1.0);
}
TEST(plotted_block, is_refused_if_all_its_values_are_infinite) {
    EXPECT_EQ(refusal("x = 1\nbegin\ny = 1e400\nend\n", "x = 1 .. 2", "y"),
              "The block has no finite values in this range.\n");
}
TEST(plotted_block, can_use_units_of_the_user) {
    plot_data data;
    EXPECT_EQ(sample_block(square, "DefUnit(ell, 18 in)\n", range("x = 0 .. 1 ell"), {plot_request("z; in")},
                           2, data),
              "");
    EXPECT_NEAR(data.y[0].values[1], 54.0, 1e-9);
}
TEST(plotted_block, needs_a_block) {
    EXPECT_EQ(refusal("1 m\n", "x = 0 .. 1", "y"), "the program has no function block, from begin to end\n");
}
TEST(plotted_block, names_the_option_whose_variable_is_unknown) {
    EXPECT_EQ(refusal(square, "q = 0 .. 1 m", "y"), "--over: the program has no variable 'q'\n");
    EXPECT_EQ(refusal(square, "x = 0 .. 1 m", "q"), "--of: the program has no variable 'q'\n");
    EXPECT_EQ(refusal(square, "x = 0 .. 1 m", ""), "--of: the program has no variable ''\n");
}
TEST(plotted_block, names_the_option_whose_units_do_not_fit) {
    EXPECT_EQ(refusal(square, "x = 0 .. 1 s", "y"), "--over: 's' does not fit 'x', which is in m\n");
    EXPECT_EQ(refusal(square, "x = 0 .. 1", "y"),
              "--over: a range without units does not fit 'x', which is in m\n");
    EXPECT_EQ(refusal(square, "x = 0 .. 1 foo", "y"), "--over: ERROR: 'foo' undefined.\n");
    EXPECT_EQ(refusal("x = 1\nbegin\ny = 2*x\nend\n", "x = 0 .. 1 m", "y"),
              "--over: 'm' does not fit 'x', which is a plain number\n");
    EXPECT_EQ(refusal(square, "x = 0 .. 1 m", "y; s"),
              "--of: ERROR IN REQUESTED OUTPUT: 's' is incompatible.\n");
}

TEST(text_plot, draws_each_series_with_its_mark) {
    const plot_data data = {{"x [m]", {0.0, 1.0, 2.0}},
                            {{"y [s]", {0.0, 5.0, 10.0}}, {"z", {10.0, gap, 0.0}}}};
    EXPECT_EQ(text_plot(data, 5, 3), "* y [s]\n"
                                     "+ z\n"
                                     "10 |+   *\n"
                                     "   |  *\n"
                                     " 0 |*   +\n"
                                     "   +-----\n"
                                     "    0   2\n"
                                     "    x [m]\n");
}
TEST(text_plot, draws_a_constant_in_the_middle) {
    const plot_data data = {{"x", {0.0, 1.0}}, {{"y", {4.0, 4.0}}}};
    EXPECT_EQ(text_plot(data, 3, 3), "* y\n"
                                     "6 |\n"
                                     "  |* *\n"
                                     "2 |\n"
                                     "  +---\n"
                                     "   0 1\n"
                                     "   x\n");
}

TEST(gnuplot_script, holds_the_data_and_the_labels) {
    const plot_data data = {{"x [m]", {0.0, 0.5}}, {{"y's", {1.0, gap}}, {"z", {2.0, 3.0}}}};
    const std::string script = gnuplot_script(data, "a'b.svg");
    EXPECT_THAT(script, HasSubstr("set terminal svg"));
    EXPECT_THAT(script, HasSubstr("set output 'a''b.svg'\n"));
    EXPECT_THAT(script, HasSubstr("set xlabel 'x [m]'\nset ylabel 'y''s, z'\n"));
    EXPECT_THAT(script, HasSubstr("$data << END\n0 1 2\n0.5 NaN 3\nEND\n"));
    EXPECT_THAT(script, HasSubstr("$data using 1:2 with lines linewidth 2 title 'y''s', "
                                  "$data using 1:3 with lines linewidth 2 title 'z'\n"));
}
TEST(gnuplot_terminal, follows_from_the_ending_of_the_file) {
    EXPECT_THAT(gnuplot_terminal("a.svg"), HasSubstr("svg"));
    EXPECT_THAT(gnuplot_terminal("a.png"), HasSubstr("png"));
    EXPECT_EQ(gnuplot_terminal("a.pdf"), "");
}

TEST(plot_command, has_a_status_for_each_failure) {
    const auto status = [](const plot_arguments& arguments) {
        std::ostringstream out;
        std::ostringstream err;
        const int result = plot_command(square, {}, arguments, out, err);
        EXPECT_EQ(err.str().empty(), result == 0) << err.str();
        EXPECT_EQ(out.str().empty(), result != 0);
        return result;
    };
    EXPECT_EQ(status({"x = 0 .. 1 m", {"y"}, "", 11}), 0);
    EXPECT_EQ(status({"x = 0 .. 1 m", {"q"}, "", 11}), 1);
    EXPECT_EQ(status({"x", {"y"}, "", 11}), 2);
    EXPECT_EQ(status({"x = 0 .. 1 m", {"y"}, "a.pdf", 11}), 2);
    EXPECT_EQ(status({"x = 0 .. 1 m", {"y"}, "", 1}), 2);
    EXPECT_EQ(status({"x = 0 .. 1 m", {"y"}, "", 100001}), 2);
    EXPECT_EQ(status({"x = 0 .. 1 m", {"y"}, "/no/such/folder/a.svg", 11}), 2);
}
TEST(plot_command, names_the_option_and_what_is_wrong) {
    const auto message = [](const plot_arguments& arguments) {
        std::ostringstream out;
        std::ostringstream err;
        plot_command(square, {}, arguments, out, err);
        return err.str();
    };
    EXPECT_EQ(message({"x = 1", {"y"}, "", 11}),
              "metrify: --over 'x = 1' is no range such as 'x = 0 .. 10 m': there "
              "is no '..' between two numbers\n");
    EXPECT_EQ(message({"q = 0 .. 1 m", {"y"}, "", 11}), "metrify: --over: the program has no variable 'q'\n");
    EXPECT_EQ(message({"x = 0 .. 1 m", {"y"}, "a.pdf", 11}),
              "metrify: --output a.pdf: the name must end in .svg or .png\n");
    EXPECT_EQ(message({"x = 0 .. 1 m", {"y"}, "", 1}),
              "metrify: --points 1: it must be between 2 and 100000\n");
}

} // namespace
