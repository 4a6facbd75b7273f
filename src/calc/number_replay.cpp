#include "calc/number_replay.h"

#include "calc/function_dispatch.h"
#include "calc/variables.h"

#include <array>
#include <cmath>

namespace metrify {

namespace {

/// A scalar without units. The components that a scalar doesn't use take part in its arithmetic; they are
/// alike.
struct number {
    double value, rest;
};

dim_value to_value(const number& from) {
    return {0, {from.value, from.rest, from.rest}, {}};
}

bool is_overflowed(const number& x) {
    return x.value == infinity_sentinel;
}

// Each operator puts its result in the place of the left operand. False where the full operator has a message
// to give or its result has units.

bool add(number& left, const number& right) {
    if (is_overflowed(left) || is_overflowed(right))
        return false;
    left = {left.value + right.value, left.rest + right.rest};
    return true;
}

bool subtract(number& left, const number& right) {
    if (is_overflowed(left) || is_overflowed(right))
        return false;
    left = {left.value - right.value, left.rest - right.rest};
    return true;
}

bool multiply(number& left, const number& right) {
    if (is_overflowed(left) || is_overflowed(right))
        return false;
    left = {left.value * right.value, 0.0};
    return true;
}

bool divide(number& left, const number& right) {
    if (is_overflowed(left) || is_overflowed(right) || right.value == 0.0)
        return false;
    left = {left.value / right.value, left.rest / right.value};
    return true;
}

bool raise(number& base, const number& exponent) {
    const double b = base.value;
    const double p = exponent.value;
    if (is_overflowed(base) || !std::isfinite(p) || (b < 0.0 && std::floor(p) != p))
        return false;
    base = {b == 0.0 && p == 0.0 ? 0.0 : std::pow(b, p), 0.0};
    return true;
}

/// The values of a statement at work. A statement that needs more room goes the long way.
class number_stack {
  public:
    number_stack() {} // NOLINT: not defaulted, so that the entries stay as they are

    std::size_t depth() const { return depth_; }
    number& top() { return entries_[depth_ - 1]; }

    bool push(const dim_value& value, bool is_number) {
        if (!is_number || depth_ == entries_.size())
            return false;
        entries_[depth_++] = {value.comp[0], value.comp[1]};
        return true;
    }
    bool push(const dim_value& value) { return push(value, is_plain_number(value)); }
    bool operate(bool (*operation)(number&, const number&)) {
        if (depth_ < 2)
            return false;
        --depth_;
        return operation(entries_[depth_ - 1], entries_[depth_]);
    }
    bool negate() {
        if (depth_ == 0 || is_overflowed(top()))
            return false;
        top() = {-top().value, -top().rest};
        return true;
    }

    // The record with the numbers of the call stands ahead of it.
    bool call(const dim_value& record, compile_ctx& ctx, text_str*& err) {
        const packed_call made = unpack_three_ints(record);
        const auto count = static_cast<std::size_t>(made.count);
        if (depth_ < count)
            return false;
        depth_ -= count;
        for (std::size_t i = 0; i < count; ++i)
            push_value(to_value(entries_[depth_ + i]), ctx);
        call_func_by_number(made.function, made.call_class, made.count, ctx, err);
        if (str_is_empty(err) && push(ctx.stack.top().value)) {
            ctx.stack.drop();
            return true;
        }
        ctx.stack.drop();
        str_clear(&err); // the long way finds the message again
        return false;
    }

    // A variable that is held gives its own value instead.
    bool assign(var_entry& entry) {
        if (entry.held) {
            --depth_;
            return push(entry.value);
        }
        entry.value = to_value(top());
        return true;
    }

  private:
    std::array<number, 32> entries_;
    std::size_t depth_ = 0;
};

// The end of a statement: its value is taken off, and nothing is left.
bool ends_statement(std::span<const stck_node> nodes, const number_stack& stack) {
    return stack.depth() == 1 && !nodes.empty() && nodes[0].opcode == OP_POP_RESULT &&
           (nodes.size() == 1 || nodes[1].opcode == OP_NOP);
}

} // namespace

std::size_t replay_numbers(std::span<const stck_node> nodes, const code_list& list, dim_value& result,
                           compile_ctx& ctx, text_str*& err) {
    if (nodes[0].opcode != OP_NOP)
        return 0;
    if (nodes.size() == 1 || nodes[1].opcode == OP_NOP) {
        dim_clear(result); // an empty statement heads a block
        return 1;
    }
    number_stack stack;
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        const stck_node& node = nodes[i];
        bool is_done = false;
        switch (node.opcode) {
        case OP_PUSH_VALUE:
            if (i + 1 < nodes.size() && nodes[i + 1].opcode == OP_CALL_FUNC)
                is_done = stack.call(list.value(nodes[i++]), ctx, err);
            else
                is_done = stack.push(list.value(node), list.is_number(node));
            break;
        case OP_PUSH_VAR:
            is_done = stack.push(list.variable(node).value);
            break;
        case OP_ADD:
            is_done = stack.operate(add);
            break;
        case OP_SUB:
            is_done = stack.operate(subtract);
            break;
        case OP_MUL:
            is_done = stack.operate(multiply);
            break;
        case OP_DIV:
            is_done = stack.operate(divide);
            break;
        case OP_POW:
            is_done = stack.operate(raise);
            break;
        case OP_NEGATE:
            is_done = stack.negate();
            break;
        case OP_SETVAR:
            // The one change that a statement makes is its last step: nothing can send it the long way then.
            is_done = ends_statement(nodes.subspan(i + 1), stack) && stack.assign(list.variable(node));
            break;
        case OP_POP_RESULT:
            if (!ends_statement(nodes.subspan(i), stack))
                return 0;
            result = to_value(stack.top());
            return i + 1;
        default:
            break;
        }
        if (!is_done)
            return 0;
    }
    return 0;
}

} // namespace metrify
