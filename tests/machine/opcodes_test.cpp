#include "machine/evaluator.h"
#include "machine/function_dispatch.h"
#include "machine/opcodes.h"
#include "machine/variables.h"
#include "tests/testing.h"

#include <gtest/gtest.h>
#include <string_view>
#include <vector>

namespace {

using namespace metrify;

constexpr unit_scale in_feet = {0, 0.0, 4.0, {}, in_m};

// A stack on which every instruction can run: three numbers, and on top a scale, the record of a vector with
// two components, or the record of a call of `mod` with two arguments.
void fill_stack(opcode code, compile_ctx& ctx) {
    for (int i = 0; i < 3; ++i)
        push_value(scalar(2), ctx);
    if (code == OP_UNIT_ASSIGN || code == OP_REQUEST_UNITS)
        push_unit_scale(in_feet, ctx);
    if (code == OP_MAKE_VECTOR)
        push_value(pack_three_ints(0, 0, 2), ctx);
    if (code == OP_CALL_FUNC) {
        cursor p("mod");
        function_ref function;
        lookup_function(p, function);
        push_value(pack_three_ints(function.number, 0, 2), ctx);
    }
}

TEST(opcode_table, has_its_rows_in_the_order_of_the_numbers) {
    for (std::size_t i = 0; i < opcode_table.size(); ++i)
        EXPECT_EQ(opcode_table[i].code, i) << opcode_table[i].name;
}

TEST(opcode_table, names_each_instruction_as_its_number_is_called) {
    const std::vector<std::string_view> names = {
        "NOP",       "PUSH_VALUE",  "PUSH_UNIT",   "ADD",           "SUB",       "MUL",       "DIV",
        "POW",       "NEGATE",      "SETVAR",      "SETVAR_C1",     "SETVAR_C2", "SETVAR_C3", "PUSH_VAR",
        "CALL_FUNC", "MAKE_VECTOR", "UNIT_ASSIGN", "REQUEST_UNITS", "POP_RESULT"};
    ASSERT_EQ(opcode_table.size(), names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(opcode_table[i].name, names[i]) << i;
}

TEST(opcode_table, states_how_many_entries_each_instruction_pops_and_pushes) {
    const dim_value value = scalar(5);
    var_entry variable = {"x", 201, scalar(3)};
    for (const opcode_row& row : opcode_table) {
        compile_ctx ctx;
        work_text err;
        fill_stack(row.code, ctx);
        const auto before = static_cast<int>(ctx.stack.depth());
        row.on_quantities({&value, &in_feet, &variable}, ctx, err.str);
        const int pops = row.pops == counted_by_record ? 1 + 2 : row.pops;
        EXPECT_EQ(static_cast<int>(ctx.stack.depth()) - before, row.pushes - pops) << row.name;
    }
}

TEST(opcode_table, gives_the_same_number_by_both_handlers_of_an_operator) {
    for (const opcode_row& row : opcode_table) {
        if (row.on_numbers == nullptr || row.code == OP_UNIT_ASSIGN)
            continue;
        compile_ctx ctx;
        work_text err;
        push_value(scalar(3), ctx);
        if (row.pops == 2)
            push_value(scalar(5), ctx);
        row.on_quantities({}, ctx, err.str);
        number left = {3.0, 0.0};
        EXPECT_TRUE(row.on_numbers(left, {5.0, 0.0})) << row.name;
        EXPECT_EQ(left.value, ctx.stack.top().value.comp[0]) << row.name;
    }
}

TEST(run_and_record, runs_an_instruction_and_records_it_with_its_payload) {
    compile_ctx ctx;
    code_list code;
    ctx.code = &code;
    work_text err;
    EXPECT_TRUE(run_and_record(OP_PUSH_VALUE, scalar(2), ctx, err.str));
    EXPECT_TRUE(run_and_record(OP_PUSH_UNIT, in_feet, ctx, err.str));
    EXPECT_TRUE(run_and_record(OP_UNIT_ASSIGN, ctx, err.str));
    EXPECT_TRUE(equal(ctx.stack.top().value, scalar(0.5, in_m)));
    ASSERT_EQ(code.nodes().size(), 3u);
    EXPECT_EQ(code.nodes()[2].opcode, OP_UNIT_ASSIGN);
    EXPECT_TRUE(equal(code.value(code.nodes()[0]), scalar(2)));
    EXPECT_EQ(code.scale(code.nodes()[1]).factor, 4.0);
}

TEST(run_and_record, gives_false_if_the_instruction_fails) {
    compile_ctx ctx;
    work_text err;
    push_value(scalar(1), ctx);
    push_value(scalar(0), ctx);
    EXPECT_FALSE(run_and_record(OP_DIV, ctx, err.str));
    EXPECT_EQ(err.view(), "ERROR: Numerical over or underflow while dividing.\n");
}

} // namespace
