#include "machine/evaluator.h"

#include "machine/function_dispatch.h"
#include "machine/operators.h"
#include "machine/variables.h"

#include <array>
#include <span>

namespace metrify {

namespace {

/// What an instruction works on.
struct replay {
    compile_ctx& ctx;
    const code_list& list;
    dim_value& result;
    text_str*& err;
};

using action = void (*)(replay&, const stck_node&);

template <void (*apply)(compile_ctx&, text_str*&)>
void operate(replay& at, const stck_node&) {
    apply(at.ctx, at.err);
}

void clear_result(replay& at, const stck_node&) {
    dim_clear(at.result);
}

void push_constant(replay& at, const stck_node& node) {
    push_value(at.list.value(node), at.ctx);
}

void push_scale(replay& at, const stck_node& node) {
    push_unit_scale(at.list.scale(node), at.ctx);
}

void push_variable(replay& at, const stck_node& node) {
    push_value(at.list.variable(node).value, at.ctx);
}

template <int component>
void set_variable(replay& at, const stck_node& node) {
    pop_value(at.result, at.ctx);
    var_entry& entry = at.list.variable(node);
    setvar(entry, at.result, component);
    push_value(entry.value, at.ctx);
}

void call_function(replay& at, const stck_node&) {
    dim_value record;
    pop_value(record, at.ctx);
    const packed_call call = unpack_three_ints(record);
    call_func_by_number(call.function, call.call_class, call.count, at.ctx, at.err);
}

void make_vector(replay& at, const stck_node&) {
    dim_value record;
    pop_value(record, at.ctx);
    stck_make_vector(at.ctx, unpack_three_ints(record).count, at.err);
}

void pop_result(replay& at, const stck_node&) {
    pop_value(at.result, at.ctx);
}

constexpr std::array<action, opcode_count> actions = {
    clear_result,                  // OP_NOP
    push_constant,                 // OP_PUSH_VALUE
    push_scale,                    // OP_PUSH_UNIT
    operate<stck_add>,             // OP_ADD
    operate<stck_subtract>,        // OP_SUB
    operate<stck_multiply>,        // OP_MUL
    operate<stck_divide>,          // OP_DIV
    operate<stck_exponentiate>,    // OP_POW
    operate<stck_negate>,          // OP_NEGATE
    set_variable<0>,               // OP_SETVAR      pops into the result, assigns, pushes what is stored then
    set_variable<1>,               // OP_SETVAR_C1
    set_variable<2>,               // OP_SETVAR_C2
    set_variable<3>,               // OP_SETVAR_C3
    push_variable,                 // OP_PUSH_VAR
    call_function,                 // OP_CALL_FUNC   pops the record of the call
    make_vector,                   // OP_MAKE_VECTOR pops the record with the count
    operate<stck_unit_assignment>, // OP_UNIT_ASSIGN
    operate<stck_request_units>,   // OP_REQUEST_UNITS
    pop_result,                    // OP_POP_RESULT
};

// Instruction by instruction, to the end or to the first message.
void replay_nodes(std::span<const stck_node> nodes, replay& at) {
    for (const stck_node& node : nodes) {
        if (node.opcode < opcode_count)
            actions[node.opcode](at, node);
        if (!str_is_empty(at.err))
            return;
    }
}

} // namespace

void eval_compiled_stck(dim_value& result, const code_list& list, text_str*& err) {
    compile_ctx ctx;
    number_program numbers;
    numbers.prepare(list);
    eval_compiled_stck(result, list, numbers, ctx, err);
}

void eval_compiled_stck(dim_value& result, const code_list& list, const number_program& numbers,
                        compile_ctx& ctx, text_str*& err) {
    dim_clear(result);
    str_clear(&err);
    ctx.stack.clear();
    replay at = {ctx, list, result, err};
    const std::span nodes(list.nodes());
    for (const replay_statement& statement : numbers.statements()) {
        if (statement.has_steps && numbers.run(statement, result, ctx, err))
            continue;
        replay_nodes(nodes.subspan(statement.first_node, statement.nodes), at);
        if (!str_is_empty(err))
            return;
    }
}

} // namespace metrify
