#include "calc/number_program.h"

#include "calc/function_dispatch.h"
#include "calc/variables.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

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

/// False for a not-a-number too.
bool is_finite(double x) {
    return std::fabs(x) < infinity_sentinel;
}

bool is_either_overflowed(const number& left, const number& right) {
    return is_overflowed(left) || is_overflowed(right);
}

// Each operator puts its result in the place of the left operand. False where the full operator has a message
// to give or its result has units. An operand that calls for a message shows in the result, so that is looked
// at first.

bool add(number& left, const number& right) {
    const double sum = left.value + right.value;
    if (!is_finite(sum) && is_either_overflowed(left, right))
        return false;
    left = {sum, left.rest + right.rest};
    return true;
}

bool subtract(number& left, const number& right) {
    const double difference = left.value - right.value;
    if (!is_finite(difference) && is_either_overflowed(left, right))
        return false;
    left = {difference, left.rest - right.rest};
    return true;
}

bool multiply(number& left, const number& right) {
    const double product = left.value * right.value;
    if (!is_finite(product) && is_either_overflowed(left, right))
        return false;
    left = {product, 0.0};
    return true;
}

bool divide(number& left, const number& right) {
    const double quotient = left.value / right.value;
    const bool is_usual = is_finite(quotient) && quotient != 0.0;
    if (!is_usual && (is_either_overflowed(left, right) || right.value == 0.0))
        return false;
    left = {quotient, left.rest / right.value};
    return true;
}

bool raise(number& base, const number& exponent) {
    const double b = base.value;
    const double p = exponent.value;
    if (is_overflowed(base) || !is_finite(p) || (b < 0.0 && std::floor(p) != p))
        return false;
    base = {b == 0.0 && p == 0.0 ? 0.0 : std::pow(b, p), 0.0};
    return true;
}

bool negate(number& of) {
    if (is_overflowed(of))
        return false;
    of = {-of.value, -of.rest};
    return true;
}

bool read_plain_number(const dim_value& value, number& into) {
    into = {value.comp[0], value.comp[1]};
    return is_plain_number(value);
}

// Puts the function's value in the place of its first argument.
bool call_function(const packed_call& made, number* arguments, compile_ctx& ctx, text_str*& err) {
    for (std::int32_t i = 0; i < made.count; ++i)
        push_value(to_value(arguments[i]), ctx);
    call_func_by_number(made.function, made.call_class, made.count, ctx, err);
    const bool is_done = str_is_empty(err) && read_plain_number(ctx.stack.top().value, *arguments);
    ctx.stack.drop();
    if (!is_done)
        str_clear(&err); // the long way finds the message again
    return is_done;
}

// A variable that is held gives its own value instead.
bool assign(var_entry& entry, number& value) {
    if (entry.held)
        return read_plain_number(entry.value, value);
    entry.value = to_value(value);
    return true;
}

/// The most values that a statement may have at work. One that needs more goes the long way.
constexpr std::size_t most_values = 32;

} // namespace

void number_program::clear() {
    statements_.clear();
    steps_.clear();
    variables_.clear();
    calls_.clear();
}

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
        statement.first_step = steps_.size();
        statement.first_variable = variables_.size();
        statement.has_steps = read_statement(list, statement);
        statement.steps = steps_.size() - statement.first_step;
        statement.variables = variables_.size() - statement.first_variable;
        statements_.push_back(statement);
        first = next;
    }
}

bool number_program::read_statement(const code_list& list, replay_statement& statement) {
    const std::span nodes(list.nodes().data() + statement.first_node, statement.nodes);
    if (nodes[0].opcode != OP_NOP)
        return false;
    std::size_t depth = 0;
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        const stck_node& node = nodes[i];
        const std::size_t behind = nodes.size() - 1 - i;
        switch (node.opcode) {
        case OP_PUSH_VALUE:
            if (list.is_number(node)) {
                steps_.push_back({action::push, 0, list.value(node).comp.data()});
                ++depth;
            } else if (behind == 0 || nodes[i + 1].opcode != OP_CALL_FUNC ||
                       !read_call(list.value(nodes[i++]), depth)) {
                return false;
            }
            break;
        case OP_PUSH_VAR:
            read_variable(list.variable(node), statement.first_variable);
            ++depth;
            break;
        case OP_ADD:
        case OP_SUB:
        case OP_MUL:
        case OP_DIV:
        case OP_POW:
            if (depth < 2)
                return false;
            read_operator(static_cast<action>(node.opcode - OP_ADD + static_cast<int>(action::add)));
            --depth;
            break;
        case OP_NEGATE:
            if (depth == 0)
                return false;
            steps_.push_back({action::negate, 0, nullptr});
            break;
        case OP_SETVAR:
            // The one change that a statement makes is its last step: nothing can send it the long way then.
            if (behind != 1)
                return false;
            statement.target = &list.variable(node);
            break;
        case OP_POP_RESULT:
            return behind == 0 && depth == 1;
        default:
            return false;
        }
        if (depth > most_values)
            return false;
    }
    return nodes.size() == 1; // an empty statement heads a block
}

// A right operand that has just been pushed is taken from where it stands.
void number_program::read_operator(action what) {
    if (steps_.back().what == action::push)
        steps_.back().what = what;
    else
        steps_.push_back({what, 0, nullptr});
}

// The record with the numbers of a call stands ahead of it.
bool number_program::read_call(const dim_value& record, std::size_t& depth) {
    const packed_call made = unpack_three_ints(record);
    const auto count = static_cast<std::size_t>(made.count);
    if (depth < count)
        return false;
    steps_.push_back({action::call, calls_.size(), nullptr});
    calls_.push_back(made);
    depth = depth - count + 1;
    return true;
}

void number_program::read_variable(const var_entry& entry, std::size_t first_variable) {
    steps_.push_back({action::push, 0, entry.value.comp.data()});
    const auto first = variables_.begin() + static_cast<std::ptrdiff_t>(first_variable);
    if (std::find(first, variables_.end(), &entry) == variables_.end())
        variables_.push_back(&entry);
}

bool number_program::run(const replay_statement& statement, dim_value& result, compile_ctx& ctx,
                         text_str*& err) const {
    for (const var_entry* entry :
         std::span(variables_.data() + statement.first_variable, statement.variables)) {
        if (!is_plain_number(entry->value))
            return false;
    }
    std::array<number, most_values + 1> room; // NOLINT: not set
    number* end = room.data();                // behind the top
    for (const step& next : std::span(steps_.data() + statement.first_step, statement.steps)) {
        const auto right = [&] {
            return next.operand != nullptr ? number{next.operand[0], next.operand[1]} : *--end;
        };
        bool is_done = true;
        switch (next.what) {
        case action::push:
            *end++ = right();
            break;
        case action::add: {
            const number by = right();
            is_done = add(end[-1], by);
            break;
        }
        case action::subtract: {
            const number by = right();
            is_done = subtract(end[-1], by);
            break;
        }
        case action::multiply: {
            const number by = right();
            is_done = multiply(end[-1], by);
            break;
        }
        case action::divide: {
            const number by = right();
            is_done = divide(end[-1], by);
            break;
        }
        case action::raise: {
            const number by = right();
            is_done = raise(end[-1], by);
            break;
        }
        case action::negate:
            is_done = negate(end[-1]);
            break;
        case action::call:
            end -= calls_[next.call].count;
            is_done = call_function(calls_[next.call], end, ctx, err);
            ++end;
            break;
        }
        if (!is_done)
            return false;
    }
    if (statement.target != nullptr && !assign(*statement.target, room[0]))
        return false;
    if (statement.is_last)
        result = statement.nodes == 1 ? dim_value() : to_value(room[0]);
    return true;
}

} // namespace metrify
