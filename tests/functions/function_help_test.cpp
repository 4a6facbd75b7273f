// The description of the built-in functions: complete, true to the table, and the same in docs/functions.md.
// Every example in it is run.

#include "functions/function_help.h"
#include "functions/function_table.h"
#include "language/driver.h"
#include "tests/functions/calling.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace metrify;
using namespace metrify::test;

std::size_t count_of(std::string_view arguments) {
    if (arguments.empty())
        return 0;
    return 1 + static_cast<std::size_t>(std::count(arguments.begin(), arguments.end(), ','));
}

TEST(function_help, has_each_function_of_the_table_once) {
    std::size_t count = 0;
    std::set<const function_row*> found;
    for (const help_chapter& chapter : function_help())
        count += chapter.functions.size();
    for (const function_row& function : all_functions()) {
        const function_row* row = find_function_help(function.name);
        ASSERT_NE(row, nullptr) << function.name;
        EXPECT_EQ(row->name, function.name);
        found.insert(row);
    }
    EXPECT_EQ(count, 89U);
    EXPECT_EQ(found.size(), 89U);
}

TEST(function_help, shows_as_many_arguments_as_a_function_takes) {
    for (const function_row& function : all_functions()) {
        if (function.takes_variables() || function.name == "Number") // which has a special syntax
            continue;
        EXPECT_EQ(count_of(find_function_help(function.name)->argument_names),
                  static_cast<std::size_t>(function.arguments))
            << function.name;
    }
}

TEST(function_help, has_a_blank_between_the_call_and_its_description) {
    function_facts function = {};
    function.name = "a_name_of_28_characters_long";
    function.argument_names = "";
    function.what = "what";
    EXPECT_EQ(help_line(function), "a_name_of_28_characters_long() what\n");
    function.argument_names = "x";
    EXPECT_EQ(help_line(function), "a_name_of_28_characters_long(x) what\n");
    function.argument_names = "xy";
    EXPECT_EQ(help_line(function), "a_name_of_28_characters_long(xy) what\n");
    function.name = "f";
    EXPECT_EQ(help_line(function), "f(xy)" + std::string(25, ' ') + "what\n");
}

TEST(function_help, finds_a_name_in_any_case) {
    EXPECT_EQ(find_function_help("besselj"), find_function_help("BesselJ"));
    EXPECT_EQ(find_function_help("bessel"), nullptr);
    EXPECT_EQ(find_function_help(""), nullptr);
}

// The last lines of a program's listing are those of the report.
bool reports(std::string_view program, std::string_view line) {
    const std::string text(program);
    const listing shown = interpret_dimensional_input_lines(text.c_str());
    const std::string_view all = shown.view();
    const std::size_t report = all.rfind("UPDATED VALUE:");
    return report != std::string_view::npos &&
           all.substr(report).find(" " + std::string(line) + "\n") != std::string_view::npos;
}

TEST(function_help, has_an_example_of_each_function_with_the_stated_result) {
    for (const function_row& function : all_functions()) {
        const function_row& row = *find_function_help(function.name);
        EXPECT_NE(row.example.find(row.name), std::string_view::npos) << row.name;
        const bool is_program = row.example.find('\n') != std::string_view::npos;
        EXPECT_TRUE(is_program ? reports(row.example, row.answer) : answer(row.example) == row.answer)
            << row.example;
    }
}

TEST(function_help, describes_infinity_angles_and_Number) {
    const std::vector<std::pair<const char*, const char*>> shown = {
        {"sin(1e400)", "= 0"},
        {"exp(1e400)", "= 0"},
        {"sqrt(1e400)", "= 0"},
        {"sign(1e400)", "= 0"},
        {"asin(1e400)", "= 0"},
        {"acosh(1e400)", "= 0"},
        {"acoth(1e400)", "= 0"},
        {"GammaFunc(1e400)", "= 0"},
        {"CarlsonRJ(1e400, 1, 1, 1)", "= 0"},
        {"abs(1e400)", "= inf"},
        {"ceil(1e400)", "= inf"},
        {"floor(1e400)", "= inf"},
        {"int(1e400)", "= inf"},
        {"round(1e400)", "= inf"},
        {"mod(1e400, 2)", "= inf"},
        {"mod(2, 1e400)", "= 2"},
        {"atan2(1, 1e400)", "= 0 rad"},
        {"atan2(1e400, 1)", "= 1.5708 rad"},
        {"lininterp(0, 0, 1, 1, 1e400)", "= inf"},
        {"mag([1e400, 0])", "= inf"},
        {"Number(1e400)", "= inf"},
        {"atanh(1e400)", "ERROR:  Arg of atanh() must be less than one."},
        {"asech(1e400)", "ERROR:  ARg to asech() must be between zero and one."},
        {"ceil(2.1 rad)", "= 3 rad"},
        {"floor(2.1 rad)", "= 2 rad"},
        {"int(2.1 rad)", "= 2 rad"},
        {"round(2.1 rad)", "= 2 rad"},
        {"Number(20 degC)", "= 293.15"},
    };
    for (const auto& [call, expected] : shown)
        EXPECT_EQ(answer(call), expected) << call;
}

TEST(function_help, equals_the_documentation) {
    std::ifstream in(METRIFY_SOURCE_DIR "/docs/functions.md", std::ios::binary);
    ASSERT_TRUE(in.is_open());
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), help_document())
        << "metrify functions --markdown writes it anew";
}

} // namespace
