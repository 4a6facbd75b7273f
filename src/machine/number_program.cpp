#include "machine/number_program.h"

#include "machine/function_dispatch.h"
#include "machine/scalar_compiler.h"
#include "machine/variables.h"

#include <array>
#include <bit>
#include <span>

namespace metrify {

namespace {

dim_value to_value(const number& from, const exponents& units) {
    return {0, {from.value, from.rest, from.rest}, units};
}

/// True for a scalar with exactly these units whose unused components are equal, as they usually are.
bool is_scalar_in(const dim_value& v, const exponents& units) {
    const auto difference = [](double x, double y) {
        return std::bit_cast<std::uint64_t>(x) ^ std::bit_cast<std::uint64_t>(y);
    };
    // Unrolled, because this is done for every variable of a replay.
    const auto& [a, b, c, d, e, f, g, h] = v.dim.powers;
    const std::uint64_t in_units = difference(a, units[0]) | difference(b, units[1]) |
                                   difference(c, units[2]) | difference(d, units[3]) |
                                   difference(e, units[4]) | difference(f, units[5]) |
                                   difference(g, units[6]) | difference(h, units[7]);
    return (in_units | difference(v.comp[1], v.comp[2])) == 0 && v.kind == 0;
}

// Most steps are one of four operators. Without a call of theirs the numbers stay in registers.
inline bool run_operator(number_handler handler, number& left, number right) {
    if (handler == multiply)
        return multiply(left, right);
    if (handler == add)
        return add(left, right);
    if (handler == subtract)
        return subtract(left, right);
    if (handler == divide)
        return divide(left, right);
    number in_memory = left; // only here is its address taken
    const bool is_done = handler(in_memory, right);
    left = in_memory;
    return is_done;
}

template <class T>
std::span<const T> part(const std::vector<T>& all, std::size_t first, std::size_t count) {
    return {all.data() + first, count};
}

} // namespace

void number_program::prepare(const code_list& list) {
    clear();
    const std::vector<stck_node>& nodes = list.nodes();
    for (std::size_t first = 0; first < nodes.size();) {
        std::size_t next = first + 1;
        while (next < nodes.size() && nodes[next].opcode != OP_NOP)
            ++next;
        replay_statement statement;
        statement.first_node = first;
        statement.nodes = next - first;
        statement.is_last = next == nodes.size();
        first = next;
        // The empty statement at the head of a block has no effect before others.
        if (statement.nodes == 1 && !statement.is_last && nodes[statement.first_node].opcode == OP_NOP)
            continue;
        compile_scalars(list, statement, code_);
        statements_.push_back(statement);
    }
}

// Stores the function's value in its first argument.
bool number_program::call(const number_call& made, number* arguments, compile_ctx& ctx,
                          text_str*& err) const {
    const exponents* units = code_.call_units.data() + made.first_units;
    for (std::int32_t i = 0; i < made.record.count; ++i)
        push_value(to_value(arguments[i], *units++), ctx);
    call_func_by_number(made.record.function, made.record.call_class, made.record.count, ctx, err);
    const dim_value& value = ctx.stack.top().value;
    const bool is_done = str_is_empty(err) && is_scalar_in(value, *units);
    *arguments = {value.comp[0], value.comp[1]};
    ctx.stack.drop();
    if (!is_done)
        str_clear(&err); // the full replay reports the message
    return is_done;
}

bool number_program::run(const replay_statement& statement, dim_value& result, compile_ctx& ctx,
                         text_str*& err) const {
    for (const number_variable& read : part(code_.variables, statement.first_variable, statement.variables))
        if (!is_scalar_in(read.entry->value, read.units))
            return false;
    // The top of the stack is kept apart from the numbers below it, so that it can be in a register.
    std::array<number, max_stack_depth + 1> below; // NOLINT: not initialized
    number* end = below.data();
    number top = {0.0, 0.0}; // the result of an empty statement
    for (const number_step& step : part(code_.steps, statement.first_step, statement.steps)) {
        bool is_done = true;
        if (step.operate != nullptr) {
            number right = top;
            if (step.operand != nullptr)
                right = {step.operand[0], step.operand[1]};
            else
                top = *--end;
            is_done = run_operator(step.operate, top, right);
        } else if (step.operand != nullptr) {
            *end++ = top; // the first step pushes the number that stands for an empty stack
            top = {step.operand[0], step.operand[1]};
        } else {
            *end++ = top;
            end -= code_.calls[step.call].record.count;
            is_done = call(code_.calls[step.call], end, ctx, err);
            top = *end;
        }
        if (!is_done)
            return false;
    }
    const bool is_held = statement.target != nullptr && statement.target->held;
    if (statement.target != nullptr && !is_held)
        statement.target->value = to_value(top, statement.units);
    if (statement.is_last) // an assignment to a held variable results in the value it holds
        result = is_held ? statement.target->value : to_value(top, statement.units);
    return true;
}

} // namespace metrify
