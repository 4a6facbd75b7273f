// Long and deeply nested inputs. An input whose cost grows faster than its length would take hours here.

#include "tests/language/long_programs.h"
#include "tests/testing.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace metrify;

constexpr std::size_t million = 1000000;
constexpr std::size_t usual_size = is_sanitized ? million / 10 : million;
constexpr std::size_t large_size = is_sanitized ? million : 10 * million;

class long_input : public testing::TestWithParam<long_program> {};

TEST_P(long_input, terminates) {
    const long_text text = GetParam().make(usual_size);
    const std::string shown = run(text.program);
    EXPECT_TRUE(ends_with(shown, text.ending)) << tail_of(shown);
}

TEST_P(long_input, does_not_affect_the_next_line) {
    const long_text text = GetParam().make(1000);
    if (ends_with(text.program, "\\")) // which includes the next line
        return;
    const std::string shown = run(text.program + "\nx = 2 + 3\n");
    EXPECT_TRUE(ends_with(shown, " ] x = 2 + 3\n       x = 5 \n\n")) << tail_of(shown);
}

std::string name_of(const testing::TestParamInfo<long_program>& program) {
    return program.param.name;
}

INSTANTIATE_TEST_SUITE_P(calc, long_input, testing::ValuesIn(all_long_programs()), name_of);

void expect_ending(const std::string& program, const std::string& ending) {
    const std::string shown = run(program);
    EXPECT_TRUE(ends_with(shown, ending)) << tail_of(shown);
}

TEST(very_long_input, of_parentheses_terminates) {
    expect_ending(repeated("(", large_size),
                  "       ERROR: Cannot parse line -- parentheses and brackets are nested too deeply.\n\n");
}

TEST(very_long_input, of_a_sum_terminates) {
    expect_ending("1" + repeated("+1-1", large_size / 4), "        = 1 \n\n");
}

TEST(very_long_input, of_units_terminates) {
    expect_ending("1" + repeated(" m", large_size / 2),
                  "        = 1 m^" + std::to_string(large_size / 2) + "\n\n");
    expect_ending(repeated("m ", large_size / 2), "       ERROR: 'm' undefined.\n\n");
}

TEST(very_long_input, of_one_line_terminates) {
    expect_ending("3" + repeated(" ", large_size) + "ft", "        = 0.9144 m\n\n");
    expect_ending(repeated("x", large_size), "x' undefined.\n\n");
}

TEST(very_long_input, of_many_lines_terminates) {
    const std::size_t lines = large_size / 10;
    expect_ending(repeated("x = 3 ft\n\n", lines),
                  "[  " + std::to_string(lines) + " ] x = 3 ft\n       x = 0.9144 m\n\n");
}

TEST(very_long_input, of_many_variables_terminates) {
    std::string program;
    const int count = is_sanitized ? 10000 : 200000;
    for (int i = 0; i < count; ++i)
        program += "v" + std::to_string(i) + " = " + std::to_string(i) + "\n";
    program += "v0 + v1 + v" + std::to_string(count - 1) + " - " + std::to_string(count - 2);
    expect_ending(program, "        = 2 \n\n");
}

TEST(very_long_input, of_many_user_units_terminates) {
    std::string program;
    const int count = is_sanitized ? 10000 : 100000;
    for (int i = 0; i < count; ++i)
        program += "DefUnit(u" + std::to_string(i) + ", 2 m)\n";
    program += "1 u0 u" + std::to_string(count - 1);
    expect_ending(program, "        = 4 m^2\n\n");
}

} // namespace
