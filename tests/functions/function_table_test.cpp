// The call of a built-in by its number: the count of its arguments, and the stack afterwards.

#include "functions/function_table.h"
#include "tests/functions/calling.h"

#include <gtest/gtest.h>
#include <utility>

namespace {

using namespace metrify;
using namespace metrify::test;

TEST(function_table, finds_a_name_in_any_case) {
    for (const char* line : {"SQRT(4)", "Sqrt(4)", "sqrt(4)"})
        EXPECT_EQ(answer(line), "= 2") << line;
    EXPECT_EQ(answer("LinInterp(0, 0, 10, 100, 5)"), "= 50");
}

TEST(function_table, compares_the_whole_token) {
    for (const char* text : {"sinx", "sin_", "sin2", "si"}) {
        cursor at(text);
        function_ref function;
        EXPECT_FALSE(lookup_function(at, function)) << text;
    }
}

TEST(function_table, numbers_each_row_by_its_place_and_finds_it_by_its_name) {
    std::int32_t number = 0;
    for (const function_row& row : all_functions()) {
        EXPECT_EQ(row.number, ++number);
        const std::string name(row.name);
        cursor at(name.c_str());
        function_ref function;
        ASSERT_TRUE(lookup_function(at, function)) << name;
        EXPECT_EQ(function.number, row.number) << name;
        EXPECT_EQ(function.mode, row.except.mode) << name;
    }
    EXPECT_EQ(number, 89);
}

TEST(function_table, refuses_a_wrong_count_of_arguments) {
    constexpr expectation lines[] = {
        {"sin()", "ERROR:  Function sin takes 1argument."},
        {"sin(1, 2)", "ERROR:  Function sin takes 1argument."},
        {"atan2(1)", "ERROR:  Function atan2 takes 2arguments."},
        {"lininterp(1, 2, 3, 4)", "ERROR:  Function LinInterp takes 5arguments."},
        {"pi(1)", "ERROR:  Function pi takes 0arguments."},
        {"gas(1)", "ERROR:  Function gas takes 0arguments."},
    };
    expect_answers(lines);
}

TEST(function_table, says_another_name_in_the_count_message_of_some_functions) {
    constexpr expectation lines[] = {
        {"euler(1)", "ERROR:  Function pi takes 0arguments."},
        {"StefanBoltzmann(1)", "ERROR:  Function Boltzmann takes 0arguments."},
        {"ExpIntEi(1, 2)", "ERROR:  Function ExpInt takes 1argument."},
    };
    expect_answers(lines);
}

TEST(function_table, states_the_number_of_arguments_of_functions_of_variables) {
    const std::pair<std::string_view, std::int32_t> needed[] = {
        {"func", 0}, {"solve", 2}, {"fmin", 2}, {"fmax", 2}};
    std::size_t found = 0;
    int takes_variables = 0;
    for (const function_row& row : all_functions()) {
        for (const auto& [name, arguments] : needed) {
            if (row.name != name)
                continue;
            ++found;
            EXPECT_EQ(row.arguments, arguments) << name;
            EXPECT_TRUE(row.takes_variables()) << name;
        }
        takes_variables += row.takes_variables();
    }
    EXPECT_EQ(found, 4U);
    EXPECT_EQ(takes_variables, 4);
}

TEST(function_table, a_wrong_count_leaves_one_cleared_value_and_the_message) {
    for (const function_row& row : all_functions()) {
        if (row.takes_variables())
            continue;
        const std::vector<dim_value> given(static_cast<std::size_t>(row.arguments + 1), scalar(7.0, meter));
        const outcome result = call(row.name, given);
        EXPECT_EQ(result.depth, 2U) << row.name;
        EXPECT_TRUE(is_cleared(result.value)) << row.name;
        EXPECT_EQ(result.err, "ERROR:  Function " + std::string(row.name_in_count()) + " takes " +
                                  std::to_string(row.arguments) +
                                  (row.arguments == 1 ? "argument.\n" : "arguments.\n"));
    }
}

TEST(function_table, a_right_count_always_leaves_one_value) {
    for (const function_row& row : all_functions()) {
        if (row.takes_variables())
            continue;
        const auto count = static_cast<std::size_t>(row.arguments);
        EXPECT_EQ(call(row.name, std::vector<dim_value>(count, scalar(0.5))).depth, 2U) << row.name;
        EXPECT_EQ(call(row.name, std::vector<dim_value>(count, vector(1, 2, 3))).depth, 2U) << row.name;
        EXPECT_EQ(call(row.name, std::vector<dim_value>(count, scalar(0.5, meter))).depth, 2U) << row.name;
    }
}

TEST(function_table, the_count_test_clears_an_earlier_message) {
    compile_ctx ctx;
    work_text err;
    err.append("an earlier message");
    push_value(scalar(4.0), ctx);
    cursor at("sqrt");
    function_ref function;
    ASSERT_TRUE(lookup_function(at, function));
    call_func_by_number(function.number, args_expressions, 1, ctx, err.str);
    EXPECT_EQ(err.view(), "");
}

TEST(function_table, missing_values_on_the_stack_are_zeros) {
    compile_ctx ctx;
    work_text err;
    cursor at("cos");
    function_ref function;
    ASSERT_TRUE(lookup_function(at, function));
    call_func_by_number(function.number, args_expressions, 1, ctx, err.str);
    dim_value result;
    pop_value(result, ctx);
    EXPECT_TRUE(equal(result, scalar(1.0)));
    EXPECT_EQ(ctx.stack.depth(), 0U);
}

TEST(function_table, refuses_a_number_of_no_function) {
    for (const std::int32_t number : {-1, 0, 90, 1000}) {
        const outcome result = call_number(number, {scalar(1.0)});
        EXPECT_EQ(result.err, "ERROR:  Bad function number in call_func_by_number.\n");
        EXPECT_EQ(result.depth, 2U); // the argument is unchanged
    }
}

TEST(function_table, has_the_code_of_every_function) {
    for (const function_row& row : all_functions())
        EXPECT_TRUE(row.run != nullptr) << row.name;
}

} // namespace
