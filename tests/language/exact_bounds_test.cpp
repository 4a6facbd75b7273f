// Parsers on memory blocks of exactly the required size. The address sanitizer detects accesses beyond the
// end.

#include "machine/number_program.h"
#include "machine/variables.h"
#include "tests/testing.h"
#include "units/unit_expression.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <string_view>

namespace {

using namespace metrify;

/// The result of parsing a text that ends with its block; the scale is in a block of its own size.
struct parsed {
    bool is_unit;
    unit_scale scale;
    std::ptrdiff_t left; // characters that were not read
};

parsed parse_exactly(std::string_view text) {
    const auto block = std::make_unique<char[]>(text.size() + 1);
    char* end = std::copy(text.begin(), text.end(), block.get());
    const auto scale = std::make_unique<unit_scale>();
    work_text err;
    cursor p(block.get());
    const bool is_unit = parse_unit_expression(p, *scale, err.str);
    return {is_unit, *scale, end - p.at};
}

void expect_dim(std::string_view text, const exponents& dim) {
    const parsed result = parse_exactly(text);
    EXPECT_TRUE(result.is_unit) << text;
    EXPECT_EQ(result.left, 0) << text;
    EXPECT_EQ(result.scale.dim, dim) << text;
}

TEST(exact_bounds, a_unit_expression_accesses_only_its_eight_exponents) {
    expect_dim("m", in_m);
    expect_dim("m^1", in_m);
    expect_dim("kg m s^-2", in_N);
    expect_dim("kg*m/s^2", in_N);
    expect_dim("(kg m)/(s s)", in_N);
    expect_dim("/s", {0, -1, 0, 0, 0, 0, 0, 0});
}

TEST(exact_bounds, a_unit_expression_ends_with_its_text) {
    for (const std::string_view text : {"", " ", "*", "/", "m*", "m/", "m ", "m^", "m^(", "m^(1", "m^*",
                                        "m^/", "(", "(m", "m (", "m/(s", "x", "m @"}) {
        const std::ptrdiff_t left = parse_exactly(text).left;
        EXPECT_GE(left, 0) << text;
        EXPECT_LE(left, static_cast<std::ptrdiff_t>(text.size())) << text;
    }
}

// ---- The reader of numbers

// True if the only statement of a list has steps. The list is copied into blocks of exactly its size.
bool has_steps(const code_list& list) {
    const auto exact = std::make_unique<code_list>(list);
    number_program program;
    program.prepare(*exact);
    return program.statements().size() == 1 && program.statements().front().has_steps;
}

TEST(exact_bounds, a_statement_is_read_to_its_last_instruction) {
    code_list list;
    list.emit(OP_NOP);
    EXPECT_TRUE(has_steps(list)) << "an empty statement";
    list.emit(OP_PUSH_VALUE, scalar(2));
    EXPECT_FALSE(has_steps(list)) << "no result";
    list.emit(OP_POP_RESULT);
    EXPECT_TRUE(has_steps(list));
    list.emit(OP_POP_RESULT);
    EXPECT_FALSE(has_steps(list)) << "something after the result";
}

TEST(exact_bounds, an_instruction_that_needs_a_successor_searches_it_within_the_statement) {
    unit_scale feet;
    feet.factor = 3.28083989501312;
    feet.dim = in_m;
    code_list unit;
    unit.emit(OP_NOP);
    unit.emit(OP_PUSH_VALUE, scalar(2));
    unit.emit(OP_PUSH_UNIT, feet);
    EXPECT_FALSE(has_steps(unit));
    unit.emit(OP_UNIT_ASSIGN);
    unit.emit(OP_POP_RESULT);
    EXPECT_TRUE(has_steps(unit));

    code_list call;
    call.emit(OP_NOP);
    call.emit(OP_PUSH_VALUE, vector(0, 0, 0));
    EXPECT_FALSE(has_steps(call));

    var_entry entry{};
    code_list assignment;
    assignment.emit(OP_NOP);
    assignment.emit(OP_PUSH_VALUE, scalar(2));
    assignment.emit(OP_SETVAR, &entry);
    EXPECT_FALSE(has_steps(assignment));
    assignment.emit(OP_POP_RESULT);
    EXPECT_TRUE(has_steps(assignment));
}

TEST(exact_bounds, an_operator_accesses_only_the_eight_exponents) {
    var_entry length{};
    length.value = scalar(2, in_m);
    for (const opcode operation : {OP_ADD, OP_SUB, OP_MUL, OP_DIV}) {
        code_list list;
        list.emit(OP_NOP);
        list.emit(OP_PUSH_VAR, &length);
        list.emit(OP_PUSH_VAR, &length);
        list.emit(operation);
        list.emit(OP_POP_RESULT);
        EXPECT_TRUE(has_steps(list)) << operation;
    }
    code_list power;
    power.emit(OP_NOP);
    power.emit(OP_PUSH_VAR, &length);
    power.emit(OP_PUSH_VALUE, scalar(2));
    power.emit(OP_POW);
    power.emit(OP_POP_RESULT);
    EXPECT_TRUE(has_steps(power));
}

} // namespace
