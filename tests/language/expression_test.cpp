// The effects of an expression on the operand stack and the instruction list. The golden programs test values
// and messages.

#include "language/assignment.h"
#include "language/expression.h"
#include "language/primary.h"
#include "machine/function_dispatch.h"
#include "machine/variables.h"
#include "tests/testing.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace metrify;

using opcodes = std::vector<std::uint32_t>;

class expression : public testing::Test {
  protected:
    expression() {
        reset_expression_state();
        free_all_vars();
        ctx.code = &code;
    }
    ~expression() override {
        reset_expression_state();
        free_all_vars();
    }

    // True if the text begins with an expression; `end` is the final cursor.
    bool compile(const std::string& text) {
        cursor p(text.c_str());
        const bool is_read = compile_rhs(p, ctx, err.str);
        end = static_cast<std::size_t>(p.at - text.c_str());
        return is_read;
    }

    // The instructions of a whole statement, which may fail.
    opcodes compiled(const std::string& statement) {
        code.clear();
        cursor p(statement.c_str());
        dim_value result;
        compile_input_line(p, result, &code, err.str);
        opcodes found;
        for (const stck_node& node : code.nodes())
            found.push_back(node.opcode);
        return found;
    }
    const dim_value& value(std::size_t node) const { return code.value(code.nodes()[node]); }
    packed_call call(std::size_t node) const { return unpack_three_ints(value(node)); }
    packed_reference reference(std::size_t node) const { return unpack_two_ints(value(node)); }

    code_list code;
    compile_ctx ctx;
    work_text err;
    std::size_t end = 0;
};

std::int32_t number_of(const char* name) {
    cursor p(name);
    function_ref function;
    EXPECT_TRUE(lookup_function(p, function)) << name;
    return function.number;
}

// Stack and cursor.

TEST_F(expression, leaves_its_value_on_the_stack) {
    EXPECT_TRUE(compile("(2 + 3) * [1, 2]"));
    EXPECT_EQ(ctx.stack.depth(), 1u);
    dim_value result;
    pop_value(result, ctx);
    EXPECT_TRUE(equal(result, vector(5, 10, 0))) << described(result);
    EXPECT_EQ(err.view(), "");
}

TEST_F(expression, may_be_nothing_and_leave_nothing) {
    for (const char* text : {"", "   ", "; m", "# note", ")", ",", "]", "()"}) {
        EXPECT_TRUE(compile(text)) << text;
        EXPECT_EQ(ctx.stack.depth(), 0u) << text;
    }
}

TEST_F(expression, ends_at_a_character_of_an_enclosing_construct) {
    for (const char* text : {"1 )", "1 ,", "1 ]"}) {
        EXPECT_TRUE(compile(text));
        EXPECT_EQ(end, 1u) << text;
    }
    EXPECT_TRUE(compile("1 ; m"));
    EXPECT_EQ(std::string("1 ; m")[end], ';');
}

TEST_F(expression, that_fails_restores_the_cursor) {
    for (const char* text :
         {"  1 + foo", "  1 +", "  (1", "  3 m + 1 s", "  [1, 2, 3, 4]", "  sin 3", "  1 2"}) {
        str_clear(&err.str);
        EXPECT_FALSE(compile(text)) << text;
        EXPECT_EQ(end, 0u) << text;
        EXPECT_NE(err.view(), "") << text;
    }
}

TEST_F(expression, is_not_read_while_a_message_is_pending) {
    err.append("a message");
    EXPECT_FALSE(compile("1 + 2"));
    EXPECT_EQ(end, 0u);
    EXPECT_EQ(ctx.stack.depth(), 0u);
    EXPECT_TRUE(code.nodes().empty());
    EXPECT_EQ(err.view(), "a message");
}

TEST_F(expression, records_nothing_without_a_list) {
    ctx.code = nullptr;
    EXPECT_TRUE(compile("-[1, 2] * (3 ft) + sqrt(4) * [3 in]")) << err.view();
    EXPECT_TRUE(code.nodes().empty());
}

// The guard against lists that make no progress.

TEST_F(expression, can_be_parsed_twelve_times_at_one_position) {
    const std::string text = "1";
    for (int i = 0; i < 12; ++i)
        EXPECT_TRUE(compile(text)) << i;
    EXPECT_FALSE(compile(text));
    EXPECT_EQ(err.view(),
              "ERROR: Cannot parse line -- check nesting of parentheses, brackets, and commas.\n");
}

TEST_F(expression, can_be_parsed_at_another_position_unless_the_guard_has_stopped) {
    const std::string text = "1";
    const std::string other = "2";
    for (int i = 0; i < 11; ++i)
        EXPECT_TRUE(compile(text));
    EXPECT_TRUE(compile(other));
    for (int i = 0; i < 12; ++i)
        EXPECT_TRUE(compile(text));
    EXPECT_FALSE(compile(text));
    str_clear(&err.str);
    EXPECT_FALSE(compile(other));
    str_clear(&err.str);
    reset_expression_state();
    EXPECT_TRUE(compile(text));
}

// Instructions.

TEST_F(expression, of_a_statement_is_recorded_between_head_and_result) {
    EXPECT_EQ(compiled(""), (opcodes{OP_NOP, OP_POP_RESULT}));
    EXPECT_EQ(compiled("5"), (opcodes{OP_NOP, OP_PUSH_VALUE, OP_POP_RESULT}));
    EXPECT_TRUE(equal(value(1), scalar(5)));
}

TEST_F(expression, appends_an_operator_after_both_operands) {
    EXPECT_EQ(compiled("2 + 3 * 4"),
              (opcodes{OP_NOP, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_MUL, OP_ADD, OP_POP_RESULT}));
    EXPECT_EQ(compiled("9 - 3 / 4"),
              (opcodes{OP_NOP, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_DIV, OP_SUB, OP_POP_RESULT}));
    EXPECT_EQ(compiled("2^3^2"),
              (opcodes{OP_NOP, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_POW, OP_PUSH_VALUE, OP_POW, OP_POP_RESULT}));
}

TEST_F(expression, includes_the_sign_in_a_number_and_negates_anything_else) {
    add_var("x", scalar(1));
    EXPECT_EQ(compiled("-3"), (opcodes{OP_NOP, OP_PUSH_VALUE, OP_POP_RESULT}));
    EXPECT_TRUE(equal(value(1), scalar(-3)));
    EXPECT_EQ(compiled("-x"), (opcodes{OP_NOP, OP_PUSH_VAR, OP_NEGATE, OP_POP_RESULT}));
    EXPECT_EQ(compiled("-(3)"), (opcodes{OP_NOP, OP_PUSH_VALUE, OP_NEGATE, OP_POP_RESULT}));
    EXPECT_EQ(compiled("+x"), (opcodes{OP_NOP, OP_PUSH_VAR, OP_POP_RESULT}));
    EXPECT_EQ(compiled("-x^2"),
              (opcodes{OP_NOP, OP_PUSH_VAR, OP_NEGATE, OP_PUSH_VALUE, OP_POW, OP_POP_RESULT}));
}

TEST_F(expression, assigns_units_after_a_number) {
    EXPECT_EQ(compiled("3 ft"),
              (opcodes{OP_NOP, OP_PUSH_VALUE, OP_PUSH_UNIT, OP_UNIT_ASSIGN, OP_POP_RESULT}));
    EXPECT_EQ(code.scale(code.nodes()[2]).factor, 3.28083989501312);
    EXPECT_EQ(code.scale(code.nodes()[2]).dim, in_m);
}

TEST_F(expression, makes_vectors_with_a_record_of_their_count) {
    EXPECT_EQ(compiled("[1, 2]"),
              (opcodes{OP_NOP, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_MAKE_VECTOR, OP_POP_RESULT}));
    EXPECT_EQ(call(3).function, 0);
    EXPECT_EQ(call(3).call_class, 0);
    EXPECT_EQ(call(3).count, 2);
    EXPECT_EQ(compiled("[]"), (opcodes{OP_NOP, OP_PUSH_VALUE, OP_MAKE_VECTOR, OP_POP_RESULT}));
    EXPECT_EQ(call(1).count, 0);
}

TEST_F(expression, calls_functions_with_a_record_of_number_class_and_count) {
    EXPECT_EQ(compiled("sqrt(4)"),
              (opcodes{OP_NOP, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_CALL_FUNC, OP_POP_RESULT}));
    EXPECT_EQ(call(2).function, number_of("sqrt"));
    EXPECT_EQ(call(2).call_class, 0);
    EXPECT_EQ(call(2).count, 1);
}

TEST_F(expression, takes_a_component_by_a_call) {
    add_var("v", vector(1, 2, 3));
    EXPECT_EQ(compiled("v[2]"),
              (opcodes{OP_NOP, OP_PUSH_VAR, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_CALL_FUNC, OP_POP_RESULT}));
    EXPECT_EQ(&code.variable(code.nodes()[1]), find_var("v"));
    EXPECT_EQ(call(3).function, number_of("component"));
    EXPECT_EQ(call(3).count, 2);
}

TEST_F(expression, strips_units_by_a_request_and_a_call) {
    add_var("x", scalar(3, in_m));
    EXPECT_EQ(compiled("Number(x, ft)"), (opcodes{OP_NOP, OP_PUSH_VAR, OP_PUSH_UNIT, OP_REQUEST_UNITS,
                                                  OP_PUSH_VALUE, OP_CALL_FUNC, OP_POP_RESULT}));
    EXPECT_EQ(call(4).function, number_of("Number"));
    EXPECT_EQ(call(4).count, 1);
}

TEST_F(expression, refers_to_variables_by_number_and_component) {
    add_var("x", scalar(1));
    add_var("y", scalar(1));
    // The comma is optional between references.
    for (const char* statement : {"solve(x y[2])", "solve(x, y[2])", "solve( x ,y [ 2 ] , )"}) {
        const opcodes found = compiled(statement);
        ASSERT_GE(found.size(), 5u) << statement;
        EXPECT_EQ(opcodes(found.begin(), found.begin() + 5),
                  (opcodes{OP_NOP, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_CALL_FUNC}));
        EXPECT_EQ(reference(1).number, 201);
        EXPECT_EQ(reference(1).component, 0);
        EXPECT_EQ(reference(2).number, 202);
        EXPECT_EQ(reference(2).component, 2);
        EXPECT_EQ(call(3).function, number_of("solve"));
        EXPECT_EQ(call(3).call_class, 1);
        EXPECT_EQ(call(3).count, 2);
    }
}

TEST_F(expression, counts_variable_and_value_of_func_separately) {
    add_var("x", scalar(1));
    const opcodes found = compiled("func(x, 3 + 1)");
    ASSERT_GE(found.size(), 7u);
    EXPECT_EQ(
        opcodes(found.begin(), found.begin() + 7),
        (opcodes{OP_NOP, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_ADD, OP_PUSH_VALUE, OP_CALL_FUNC}));
    EXPECT_EQ(reference(1).number, 201);
    EXPECT_EQ(call(5).function, number_of("func"));
    EXPECT_EQ(call(5).call_class, -1);
    EXPECT_EQ(call(5).count, 2);
}

TEST_F(expression, refers_to_an_unknown_variable_by_the_number_0) {
    const opcodes found = compiled("solve(x)");
    ASSERT_GE(found.size(), 4u);
    EXPECT_EQ(found[3], OP_CALL_FUNC);
    EXPECT_EQ(reference(1).number, 0);
}

// Assignments.

TEST_F(expression, is_assigned_by_the_instruction_of_the_component) {
    EXPECT_EQ(compiled("x = 5"), (opcodes{OP_NOP, OP_PUSH_VALUE, OP_SETVAR, OP_POP_RESULT}));
    EXPECT_EQ(&code.variable(code.nodes()[2]), find_var("x"));
    EXPECT_EQ(compiled("x[1] = 5"), (opcodes{OP_NOP, OP_PUSH_VALUE, OP_SETVAR_C1, OP_POP_RESULT}));
    EXPECT_EQ(compiled("x[2] = 5"), (opcodes{OP_NOP, OP_PUSH_VALUE, OP_SETVAR_C2, OP_POP_RESULT}));
    EXPECT_EQ(compiled("x [ 3 ] = 5"), (opcodes{OP_NOP, OP_PUSH_VALUE, OP_SETVAR_C3, OP_POP_RESULT}));
}

TEST_F(expression, can_be_inspected_for_the_name_that_it_is_assigned_to) {
    const auto target = [this](const char* statement) {
        return std::string(peek_assignment_target(cursor(statement), err.str));
    };
    EXPECT_EQ(target("x = 5"), "x");
    EXPECT_EQ(target("  x [ 2 ] = 5"), "x");
    EXPECT_EQ(target("x \\\n = 5"), "x");
    for (const char* statement :
         {"", "5", "x", "x + 1 = 2", "2 = 1", "x[4] = 2", "x; = 3", "m = 3", "sin = 3"})
        EXPECT_EQ(target(statement), "") << statement;
    EXPECT_EQ(err.view(), "");
    EXPECT_EQ(find_var("x"), nullptr);
}

TEST_F(expression, has_no_operand_while_a_message_is_pending) {
    err.append("a message");
    const std::string text = " 1";
    cursor p(text.c_str());
    EXPECT_FALSE(is_num_paren_var_func_or_null(p, ctx, err.str));
    EXPECT_EQ(p.at, text.c_str());
    EXPECT_EQ(ctx.stack.depth(), 0u);
    EXPECT_TRUE(code.nodes().empty());
    EXPECT_EQ(err.view(), "a message");
}

} // namespace
