#include "machine/evaluator.h"

#include "base/interruption.h"

#include <cstdint>
#include <span>

namespace metrify {

namespace {

// Runs instructions up to the end or to the first message.
void replay_nodes(const code_list& list, std::span<const stck_node> nodes, compile_ctx& ctx, text_str*& err) {
    for (const stck_node& node : nodes) {
        if (node.opcode < opcode_count)
            opcode_table[node.opcode].on_quantities(list.payload_of(node), ctx, err);
        if (!str_is_empty(err))
            return;
    }
}

void replay_statements(const code_list& list, const number_program& numbers, compile_ctx& ctx,
                       text_str*& err) {
    const std::span nodes(list.nodes());
    std::int64_t count = 0;
    for (const replay_statement& statement : numbers.statements()) {
        if (is_interrupted_at(++count))
            return;
        if (statement.has_steps && numbers.run(statement, ctx.result, ctx, err))
            continue;
        replay_nodes(list, nodes.subspan(statement.first_node, statement.nodes), ctx, err);
        if (!str_is_empty(err))
            return;
    }
}

} // namespace

bool run_and_record(opcode code, const payload& of, compile_ctx& ctx, text_str*& err) {
    if (ctx.code != nullptr)
        ctx.code->emit(code, of);
    opcode_table[code].on_quantities(of, ctx, err);
    return str_is_empty(err);
}

void eval_compiled_stck(dim_value& result, const code_list& list, text_str*& err) {
    compile_ctx ctx;
    number_program numbers;
    numbers.prepare(list);
    eval_compiled_stck(list, numbers, ctx, err);
    result = ctx.result;
}

void eval_compiled_stck(const code_list& list, const number_program& numbers, compile_ctx& ctx,
                        text_str*& err) {
    str_clear(&err);
    dim_clear(ctx.result);
    ctx.stack.clear();
    replay_statements(list, numbers, ctx, err);
}

} // namespace metrify
