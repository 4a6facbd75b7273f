#include "machine/operand_stack.h"
#include "tests/testing.h"

#include <gtest/gtest.h>

namespace {

using namespace metrify;

dim_value popped(compile_ctx& ctx) {
    dim_value v = vector(7, 7, 7, in_N);
    pop_value(v, ctx);
    return v;
}

TEST(operand_stack, gives_the_last_value_first) {
    compile_ctx ctx;
    push_value(scalar(1), ctx);
    push_value(vector(2, 3, 4, in_m), ctx);
    EXPECT_EQ(ctx.stack.depth(), 2u);
    EXPECT_TRUE(equal(popped(ctx), vector(2, 3, 4, in_m)));
    EXPECT_TRUE(equal(popped(ctx), scalar(1)));
    EXPECT_EQ(ctx.stack.depth(), 0u);
}

TEST(operand_stack, pops_cleared_records_when_empty) {
    compile_ctx ctx;
    EXPECT_TRUE(equal(popped(ctx), scalar(0)));
    EXPECT_TRUE(equal(popped(ctx), scalar(0)));
    unit_scale scale = {1, 2.0, 3.0, {4.0, 5.0}, in_N};
    pop_unit_scale(scale, ctx);
    EXPECT_EQ(scale.kind, 0);
    EXPECT_EQ(scale.offset, 0.0);
    EXPECT_EQ(scale.factor, 0.0);
    EXPECT_EQ(scale.spare, (std::array<double, 2>{}));
    EXPECT_EQ(scale.dim, in_plain);
    EXPECT_EQ(ctx.stack.depth(), 0u);
}

TEST(operand_stack, holds_unit_scales_with_all_their_fields) {
    compile_ctx ctx;
    push_unit_scale({1, 2.0, 3.0, {4.0, 5.0}, in_N}, ctx);
    unit_scale scale;
    pop_unit_scale(scale, ctx);
    EXPECT_EQ(scale.kind, 1);
    EXPECT_EQ(scale.offset, 2.0);
    EXPECT_EQ(scale.factor, 3.0);
    EXPECT_EQ(scale.spare, (std::array<double, 2>{4.0, 5.0}));
    EXPECT_EQ(scale.dim, in_N);
}

TEST(operand_stack, has_one_layout_for_values_and_scales) {
    // Only the instructions determine which of the two an entry is.
    compile_ctx ctx;
    push_unit_scale({0, 2.0, 3.0, {4.0, 5.0}, in_N}, ctx);
    EXPECT_TRUE(equal(popped(ctx), {0, {3, 4, 5}, in_N}));
    push_value({0, {3, 4, 5}, in_N}, ctx);
    unit_scale scale;
    pop_unit_scale(scale, ctx);
    EXPECT_EQ(scale.offset, 0.0);
    EXPECT_EQ(scale.factor, 3.0);
    EXPECT_EQ(scale.spare, (std::array<double, 2>{4.0, 5.0}));
}

TEST(operand_stack, has_no_limit) {
    compile_ctx ctx;
    constexpr int count = 100000;
    for (int i = 0; i < count; ++i)
        push_value(scalar(i), ctx);
    EXPECT_EQ(ctx.stack.depth(), static_cast<std::size_t>(count));
    for (int i = count; i-- > 0;)
        ASSERT_EQ(popped(ctx).comp[0], i);
}

TEST(operand_stack, fills_missing_operands_in_at_the_bottom) {
    compile_ctx ctx;
    push_value(scalar(5, in_m), ctx);
    ctx.stack.require(3);
    EXPECT_EQ(ctx.stack.depth(), 3u);
    EXPECT_TRUE(equal(popped(ctx), scalar(5, in_m)));
    EXPECT_TRUE(equal(popped(ctx), scalar(0)));
    EXPECT_TRUE(equal(popped(ctx), scalar(0)));
}

TEST(operand_stack, is_left_as_it_is_if_there_are_operands_enough) {
    compile_ctx ctx;
    push_value(scalar(5), ctx);
    push_value(scalar(6), ctx);
    ctx.stack.require(2);
    EXPECT_EQ(ctx.stack.depth(), 2u);
}

TEST(emit_node, records_nothing_where_no_list_is_kept) {
    compile_ctx ctx;
    emit_node(OP_ADD, ctx);
    emit_node(OP_PUSH_VALUE, ctx, scalar(1));
    code_list code;
    ctx.code = &code;
    emit_node(OP_PUSH_VALUE, ctx, scalar(1));
    EXPECT_EQ(code.nodes().size(), 1u);
}

} // namespace
