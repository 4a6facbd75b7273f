#include "machine/code_list.h"
#include "machine/variables.h"
#include "tests/testing.h"

#include <gtest/gtest.h>

namespace {

using namespace metrify;

TEST(opcodes, have_their_fixed_numbers) {
    EXPECT_EQ(OP_NOP, 0u);
    EXPECT_EQ(OP_PUSH_VALUE, 1u);
    EXPECT_EQ(OP_PUSH_UNIT, 2u);
    EXPECT_EQ(OP_ADD, 3u);
    EXPECT_EQ(OP_SUB, 4u);
    EXPECT_EQ(OP_MUL, 5u);
    EXPECT_EQ(OP_DIV, 6u);
    EXPECT_EQ(OP_POW, 7u);
    EXPECT_EQ(OP_NEGATE, 8u);
    EXPECT_EQ(OP_SETVAR, 9u);
    EXPECT_EQ(OP_SETVAR_C1, 10u);
    EXPECT_EQ(OP_SETVAR_C2, 11u);
    EXPECT_EQ(OP_SETVAR_C3, 12u);
    EXPECT_EQ(OP_PUSH_VAR, 13u);
    EXPECT_EQ(OP_CALL_FUNC, 14u);
    EXPECT_EQ(OP_MAKE_VECTOR, 15u);
    EXPECT_EQ(OP_UNIT_ASSIGN, 16u);
    EXPECT_EQ(OP_REQUEST_UNITS, 17u);
    EXPECT_EQ(OP_POP_RESULT, 18u);
    EXPECT_EQ(opcode_count, 19u);
}

TEST(code_list, keeps_instructions_in_order_with_copies_of_their_payloads) {
    code_list list;
    dim_value value = scalar(1, in_m);
    list.emit(OP_NOP);
    list.emit(OP_PUSH_VALUE, value);
    value = scalar(2, in_s);
    list.emit(OP_PUSH_VALUE, value);
    list.emit(OP_PUSH_UNIT, unit_scale{0, 1.0, 2.0, {}, in_N});
    list.emit(OP_MUL);
    ASSERT_EQ(list.nodes().size(), 5u);
    EXPECT_EQ(list.nodes()[0].opcode, OP_NOP);
    EXPECT_EQ(list.nodes()[4].opcode, OP_MUL);
    EXPECT_TRUE(equal(list.value(list.nodes()[1]), scalar(1, in_m)));
    EXPECT_TRUE(equal(list.value(list.nodes()[2]), scalar(2, in_s)));
    EXPECT_EQ(list.scale(list.nodes()[3]).factor, 2.0);
    EXPECT_EQ(list.scale(list.nodes()[3]).dim, in_N);
}

TEST(code_list, refers_to_variables_by_their_entries) {
    var_entry entry = {"x", 201, scalar(1)};
    code_list list;
    list.emit(OP_PUSH_VAR, &entry);
    entry.value = scalar(2);
    EXPECT_EQ(&list.variable(list.nodes()[0]), &entry);
}

TEST(code_list, appends_another_list_with_its_payloads) {
    var_entry x = {"x", 201, scalar(1)};
    var_entry y = {"y", 202, scalar(2)};
    code_list list;
    list.emit(OP_PUSH_VALUE, scalar(1));
    list.emit(OP_PUSH_UNIT, unit_scale{0, 0.0, 1.0, {}, in_m});
    list.emit(OP_PUSH_VAR, &x);
    code_list other;
    other.emit(OP_NOP);
    other.emit(OP_PUSH_VALUE, scalar(5));
    other.emit(OP_PUSH_UNIT, unit_scale{0, 0.0, 7.0, {}, in_s});
    other.emit(OP_SETVAR, &y);
    other.emit(OP_SETVAR_C1, &y);
    other.emit(OP_SETVAR_C2, &x);
    other.emit(OP_SETVAR_C3, &y);
    other.emit(OP_CALL_FUNC, pack_three_ints(1, 0, 1));
    other.emit(OP_MAKE_VECTOR, pack_three_ints(0, 0, 3));
    other.emit(OP_POP_RESULT);
    list.append(other);

    ASSERT_EQ(list.nodes().size(), 13u);
    for (std::size_t i = 0; i < other.nodes().size(); ++i)
        EXPECT_EQ(list.nodes()[3 + i].opcode, other.nodes()[i].opcode) << i;
    EXPECT_TRUE(equal(list.value(list.nodes()[0]), scalar(1)));
    EXPECT_TRUE(equal(list.value(list.nodes()[4]), scalar(5)));
    EXPECT_EQ(list.scale(list.nodes()[5]).factor, 7.0);
    EXPECT_EQ(&list.variable(list.nodes()[2]), &x);
    EXPECT_EQ(&list.variable(list.nodes()[6]), &y);
    EXPECT_EQ(&list.variable(list.nodes()[7]), &y);
    EXPECT_EQ(&list.variable(list.nodes()[8]), &x);
    EXPECT_EQ(&list.variable(list.nodes()[9]), &y);
}

TEST(code_list, is_empty_when_cleared) {
    code_list list;
    list.emit(OP_PUSH_VALUE, scalar(1));
    list.clear();
    EXPECT_TRUE(list.nodes().empty());
    list.emit(OP_PUSH_VALUE, scalar(2));
    EXPECT_TRUE(equal(list.value(list.nodes()[0]), scalar(2)));
}

} // namespace
