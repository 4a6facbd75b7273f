// The description of the built-in functions: complete, true to the table, and the same in docs/functions.md.
// Every example in it is run.

#include "calc/driver.h"
#include "functions/function_help.h"
#include "functions/function_table.h"
#include "tests/functions/calling.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>

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
    std::set<const help_row*> found;
    for (const help_family& family : function_help())
        count += family.rows.size();
    for (const function_row& function : all_functions()) {
        const help_row* row = find_function_help(function.name);
        ASSERT_NE(row, nullptr) << function.name;
        found.insert(row);
    }
    EXPECT_EQ(count, 89U);
    EXPECT_EQ(found.size(), 89U);
}

TEST(function_help, shows_as_many_arguments_as_a_function_takes) {
    for (const function_row& function : all_functions()) {
        if (!function.exact || function.name == "Number") // which has a syntax of its own
            continue;
        EXPECT_EQ(count_of(find_function_help(function.name)->arguments),
                  static_cast<std::size_t>(function.arguments))
            << function.name;
    }
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

TEST(function_help, has_an_example_of_each_function_which_shows_what_is_said) {
    for (const function_row& function : all_functions()) {
        const help_row& row = *find_function_help(function.name);
        EXPECT_NE(row.example.find(row.name), std::string_view::npos) << row.name;
        if (row.example.find('\n') == std::string_view::npos)
            EXPECT_EQ(answer(row.example), row.answer) << row.example;
        else
            EXPECT_TRUE(reports(row.example, row.answer)) << row.example;
    }
}

TEST(function_help, is_what_stands_in_the_documentation) {
    std::ifstream in(METRIFY_SOURCE_DIR "/docs/functions.md", std::ios::binary);
    ASSERT_TRUE(in.is_open());
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), help_document())
        << "metrify functions --markdown writes it anew";
}

} // namespace
