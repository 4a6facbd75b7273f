// A spreadsheet's calculation thread may have a stack of 256 KiB. No input may overflow it.

#include "tests/language/long_programs.h"
#include "tests/testing.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <string>

namespace {

using namespace metrify;

// Stack frames are several times as large with sanitizers.
constexpr std::size_t stack_size = (is_sanitized ? 8 : 1) * std::size_t{256} * 1024;

struct job {
    const std::string& program;
    std::string shown;
};

void* run_job(void* argument) {
    job& at = *static_cast<job*>(argument);
    at.shown = run(at.program);
    return nullptr;
}

std::string run_on_a_small_stack(const std::string& program) {
    job at = {program, {}};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    EXPECT_EQ(pthread_attr_setstacksize(&attributes, stack_size), 0);
    pthread_t thread = {};
    EXPECT_EQ(pthread_create(&thread, &attributes, run_job, &at), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    return at.shown;
}

class small_stack : public testing::TestWithParam<long_program> {};

TEST_P(small_stack, is_sufficient) {
    const long_text text = GetParam().make(100000);
    const std::string shown = run_on_a_small_stack(text.program);
    EXPECT_TRUE(ends_with(shown, text.ending)) << tail_of(shown);
}

INSTANTIATE_TEST_SUITE_P(calc, small_stack, testing::ValuesIn(all_long_programs()),
                         [](const testing::TestParamInfo<long_program>& program) {
                             return std::string(program.param.name);
                         });

// The deepest allowed nesting, with a construct at the innermost level.
struct deepest_nesting : testing::Test {
    static constexpr std::size_t levels = 98; // leaves levels for the innermost construct

    static void expect_answer(const std::string& open, const std::string& inner, const std::string& close,
                              const std::string& answer) {
        const std::string line = repeated(open, levels) + inner + repeated(close, levels);
        const std::string in_a_block = "begin\n" + line + "\nend\nPrintFunc";
        EXPECT_EQ(run_on_a_small_stack(line), "[  1 ] " + line + "\n       " + answer + "\n\n");
        const std::string listed = run_on_a_small_stack(in_a_block);
        EXPECT_TRUE(ends_with(listed, "[  PrintFunc1 ] " + line + "\n       " + answer +
                                          "\n\n[  PrintFunc2 ] end\n       \n\n\n"))
            << tail_of(listed);
    }
    static std::string deep_unit() { return repeated("(", levels) + "m" + repeated(")", levels); }
    static std::string deep_exponent() { return "m^" + repeated("(", levels) + "2" + repeated(")", levels); }
};

TEST_F(deepest_nesting, of_parentheses_works) {
    expect_answer("(", "1 " + deep_unit(), ")", " = 1 m");
    expect_answer("-(", "1 " + deep_exponent(), ")", " = 1 m^2");
}

TEST_F(deepest_nesting, of_calls_works) {
    expect_answer("abs(", "-1 " + deep_unit(), ")", " = 1 m");
    expect_answer("Number(", "1 " + deep_exponent(), ")", " = 1 ");
    expect_answer("Number(", "1 m, " + deep_unit(), ")", " = 1 ");
}

TEST_F(deepest_nesting, of_vectors_reports_the_innermost_error) {
    const std::string line = repeated("[", levels) + "1 " + deep_unit() + repeated("]", levels);
    EXPECT_EQ(run_on_a_small_stack(line),
              "[  1 ] " + line + "\n       ERROR:  All vector components must be scalars.\n\n");
}

} // namespace
