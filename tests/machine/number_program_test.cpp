// The fast path of a replay: its results equal those of the single instructions to the last bit, and it
// declines what cannot be known in advance.

#include "language/assignment.h"
#include "language/expression.h"
#include "machine/evaluator.h"
#include "machine/variables.h"
#include "tests/testing.h"
#include "units/unit_system.h"
#include "units/user_units.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

using namespace metrify;

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double numbers[] = {0.0, -0.0, 1.0, -1.0, 2.5, -3.75, 1e308, infinite, -infinite, NAN, 1e-320};

// Formulas of a and b in meters and of c without units. Some of them fail for some numbers.
constexpr const char* formulas[] = {"a + b",
                                    "a - b",
                                    "b - a - a",
                                    "a*b",
                                    "a*b*c",
                                    "a/b",
                                    "a/c",
                                    "a^2",
                                    "a^-2",
                                    "(a*b)^0.5",
                                    "c^c",
                                    "a^c",
                                    "c^0",
                                    "a^0",
                                    "-a",
                                    "-(a*b)^2",
                                    "(a + b)*0.5 - a/3 + a*(b - 2 m)/(7 m)",
                                    "a + 2 m",
                                    "2 m - a",
                                    "a + 3 ft",
                                    "a*(3 s)/b",
                                    "a + c",
                                    "a + 0",
                                    "0 + a",
                                    "c - c + a",
                                    "a/0",
                                    "c deg",
                                    "c degF",
                                    "c degC + 5 degC",
                                    "a*1 rad",
                                    "c rad*a",
                                    "sin(c)",
                                    "sin(c deg)",
                                    "asin(c)",
                                    "exp(c)*a",
                                    "ln(c)",
                                    "sqrt(a)",
                                    "sqrt(a*b)",
                                    "abs(a)",
                                    "sign(a)*c",
                                    "mod(a, b)",
                                    "atan2(a, b)",
                                    "round(c)",
                                    "acosh(c)",
                                    "grav()*a",
                                    "gas()*c",
                                    "Number(a)",
                                    "lininterp(0 m, 0, 1 m, 10, a)",
                                    "mag([a, b, a])",
                                    "[a, b]",
                                    "a*[1, 2]",
                                    "BesselJ(0, c)",
                                    "c*c*c + c - 1",
                                    "c*1 degCdiff",
                                    "(c degK)*(1 degCdiff)"};

class number_program_of : public testing::Test {
  protected:
    number_program_of() { forget(); }
    ~number_program_of() override { forget(); }

    static void forget() {
        reset_expression_state();
        reset_unit_state();
        free_user_units();
        free_all_vars();
    }

    // Runs a statement through the parser; all variables exist. Its message does not matter here.
    static bool compile(const std::string& statement, code_list& list) {
        work_text err;
        cursor p(statement.c_str());
        dim_value result;
        return compile_input_line(p, result, &list, err.str) && str_is_empty(err.str);
    }

    static void set(const char* name, const dim_value& value) {
        if (var_entry* entry = find_var(name))
            entry->value = value;
        else
            add_var(name, value);
    }
    static void set_all(double a, double b, double c) {
        set("a", scalar(a, in_m));
        set("b", scalar(b, in_m));
        set("c", scalar(c));
    }

    compile_ctx ctx;
    work_text err;
};

bool same_bits(double x, double y) {
    return std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(y) ||
           (std::isnan(x) && std::isnan(y));
}

// The sign of an exponent that is 0 doesn't count.
bool same_exponents(const exponents& x, const exponents& y) {
    return std::equal(
        x.begin(), x.end(), y.begin(), [](double p, double q) { return p == q || same_bits(p, q); });
}

bool same_to_the_last_bit(const dim_value& x, const dim_value& y) {
    return x.kind == y.kind && same_exponents(x.dim, y.dim) &&
           std::equal(x.comp.begin(), x.comp.end(), y.comp.begin(), same_bits);
}

struct outcome {
    dim_value result, stored;
    std::string message;
};

outcome replay(const code_list& list, const number_program& program, compile_ctx& ctx) {
    outcome got;
    work_text err;
    find_var("y")->value = vector(7, 7, 7, in_N);
    eval_compiled_stck(list, program, ctx, err.str);
    got.result = ctx.result;
    got.stored = find_var("y")->value;
    got.message = err.view();
    return got;
}

TEST_F(number_program_of, a_statement_gives_the_result_of_its_instructions) {
    int with_steps = 0;
    for (const char* formula : formulas) {
        SCOPED_TRACE(formula);
        set_all(3.0, 2.0, 1.5);
        set("y", scalar(0));
        code_list list;
        if (!compile(std::string("y = ") + formula, list))
            continue;
        set_all(3.0, 2.0, 1.5);
        number_program program;
        program.prepare(list);
        with_steps += program.statements().back().has_steps ? 1 : 0;
        // A statement with a vector has no steps, so this program replays single instructions.
        for (const char* name : {"a", "b", "c"})
            set(name, vector(1, 2, 3));
        number_program full_replay;
        full_replay.prepare(list);
        for (const double a : numbers) {
            for (const double b : numbers) {
                for (const double c : numbers) {
                    set_all(a, b, c);
                    const outcome expected = replay(list, full_replay, ctx);
                    const outcome got = replay(list, program, ctx);
                    ASSERT_EQ(got.message, expected.message) << a << " " << b << " " << c;
                    ASSERT_TRUE(same_to_the_last_bit(got.result, expected.result))
                        << a << " " << b << " " << c << ": " << described(got.result) << ", not "
                        << described(expected.result);
                    ASSERT_TRUE(same_to_the_last_bit(got.stored, expected.stored));
                }
            }
        }
    }
    EXPECT_GT(with_steps, 35);
}

TEST_F(number_program_of, a_scalar_statement_runs_its_steps) {
    set_all(3.0, 2.0, 1.5);
    code_list list;
    ASSERT_TRUE(compile("y = (a + 2 m)*b/(4 s) + c*(1 m^2/s)", list));
    number_program program;
    program.prepare(list);
    ASSERT_EQ(program.statements().size(), 1U);
    const replay_statement& statement = program.statements()[0];
    ASSERT_TRUE(statement.has_steps);
    set_all(6.0, 3.0, 0.5);
    dim_value result;
    EXPECT_TRUE(program.run(statement, result, ctx, err.str));
    constexpr exponents in_m2_per_s = {0, -1, 0, 2, 0, 0, 0, 0};
    EXPECT_TRUE(equal(result, scalar(6.5, in_m2_per_s))) << described(result);
    EXPECT_TRUE(equal(find_var("y")->value, scalar(6.5, in_m2_per_s)));
}

TEST_F(number_program_of, other_units_use_the_full_replay_and_change_nothing_before) {
    set_all(3.0, 2.0, 1.5);
    code_list list;
    ASSERT_TRUE(compile("y = a*b", list));
    number_program program;
    program.prepare(list);
    dim_value result = vector(7, 7, 7);
    for (const dim_value& other : {scalar(5, in_s), scalar(5), vector(1, 2, 3, in_m)}) {
        set("a", other);
        EXPECT_FALSE(program.run(program.statements()[0], result, ctx, err.str));
        EXPECT_TRUE(equal(result, vector(7, 7, 7)));
        EXPECT_TRUE(equal(find_var("y")->value, scalar(6, {0, 0, 0, 2, 0, 0, 0, 0})));
    }
    set("a", scalar(5, in_s));
    eval_compiled_stck(list, program, ctx, err.str);
    EXPECT_TRUE(equal(find_var("y")->value, scalar(10, {0, 1, 0, 1, 0, 0, 0, 0})));
}

TEST_F(number_program_of, a_variable_uses_the_fast_path_in_its_units_and_in_no_others) {
    for (std::size_t i = 0; i < 8; ++i) {
        exponents units = {};
        units[i] = 2;
        set_all(3.0, 2.0, 1.5);
        set("a", scalar(5, units));
        code_list list;
        ASSERT_TRUE(compile("y = 3*a", list));
        number_program program;
        program.prepare(list);
        dim_value result;
        set("a", scalar(7, units));
        EXPECT_TRUE(program.run(program.statements()[0], result, ctx, err.str)) << i;
        EXPECT_TRUE(equal(result, scalar(21, units))) << i;
        for (std::size_t other = 0; other < 8; ++other) {
            exponents changed = units;
            changed[other] += 1;
            set("a", scalar(7, changed));
            EXPECT_FALSE(program.run(program.statements()[0], result, ctx, err.str)) << i << other;
        }
        dim_value mixed = scalar(7, units);
        mixed.comp[2] = 1;
        set("a", mixed);
        EXPECT_FALSE(program.run(program.statements()[0], result, ctx, err.str)) << i;
    }
}

TEST_F(number_program_of, an_empty_statement_has_steps_and_instructions_after_it_are_ignored) {
    code_list list;
    list.emit(OP_NOP);
    number_program program;
    program.prepare(list);
    ASSERT_EQ(program.statements().size(), 1U);
    EXPECT_TRUE(program.statements()[0].has_steps);
    dim_value result = vector(7, 7, 7);
    EXPECT_TRUE(program.run(program.statements()[0], result, ctx, err.str));
    EXPECT_TRUE(equal(result, scalar(0)));
}

TEST_F(number_program_of, a_sum_that_rests_on_a_zero_has_no_steps) {
    set_all(3.0, 2.0, 0.0);
    for (const char* statement : {"y = a + c", "y = c - a", "y = a + 0"}) {
        code_list list;
        ASSERT_TRUE(compile(statement, list)) << statement;
        number_program program;
        program.prepare(list);
        EXPECT_FALSE(program.statements()[0].has_steps) << statement;
    }
}

TEST_F(number_program_of, a_variable_that_is_held_keeps_its_value_and_gives_it) {
    set_all(3.0, 2.0, 1.5);
    code_list list;
    ASSERT_TRUE(compile("y = a*b", list));
    number_program program;
    program.prepare(list);
    var_entry& y = *find_var("y");
    y.value = scalar(9, in_s);
    y.held = true;
    dim_value result;
    EXPECT_TRUE(program.run(program.statements()[0], result, ctx, err.str));
    EXPECT_TRUE(equal(result, scalar(9, in_s)));
    EXPECT_TRUE(equal(y.value, scalar(9, in_s)));
}

TEST_F(number_program_of, a_statement_with_more_values_than_the_stack_holds_has_no_steps) {
    set_all(3.0, 2.0, 1.5);
    std::string statement = "y = ";
    for (std::size_t i = 0; i < max_stack_depth; ++i)
        statement += "a + (";
    statement += "a" + std::string(max_stack_depth, ')');
    code_list list;
    ASSERT_TRUE(compile(statement, list));
    number_program program;
    program.prepare(list);
    EXPECT_FALSE(program.statements()[0].has_steps);
    eval_compiled_stck(list, program, ctx, err.str);
    EXPECT_TRUE(equal(ctx.result, scalar(3.0 * (max_stack_depth + 1), in_m)));
}

TEST_F(number_program_of, what_is_not_known_in_advance_has_no_steps) {
    // The last two have fewer operands than they use, which count as 0.
    for (const char* statement : {"y = 2^c", "y = c ft", "y = -()", "y = atan2(, c)"}) {
        set_all(3.0, 2.0, 1.5);
        code_list list;
        ASSERT_TRUE(compile(statement, list)) << statement;
        set("c", scalar(1.5, in_m));
        number_program program;
        program.prepare(list);
        EXPECT_FALSE(program.statements()[0].has_steps) << statement;
    }
}

TEST_F(number_program_of, an_infinite_constant_has_no_steps_and_keeps_its_message) {
    const std::pair<const char*, const char*> statements[] = {
        {"-(1e400)", "ERROR: Numerical over or underflow while negating.\n"},
        {"1e400 ft", "ERROR: Numerical over or underflow while unit_assignment.\n"}};
    for (const auto& [statement, message] : statements) {
        code_list list;
        EXPECT_FALSE(compile(statement, list)) << statement;
        list.emit(OP_POP_RESULT);
        number_program program;
        program.prepare(list);
        EXPECT_FALSE(program.statements()[0].has_steps) << statement;
        eval_compiled_stck(list, program, ctx, err.str);
        EXPECT_EQ(err.view(), message);
    }
}

TEST_F(number_program_of, instructions_without_the_mark_of_a_statement_have_no_steps) {
    code_list list;
    list.emit(OP_POP_RESULT);
    number_program program;
    program.prepare(list);
    ASSERT_EQ(program.statements().size(), 1U);
    EXPECT_FALSE(program.statements()[0].has_steps);
}

} // namespace
