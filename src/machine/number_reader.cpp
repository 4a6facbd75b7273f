#include "machine/number_reader.h"

#include "machine/function_dispatch.h"
#include "machine/operators.h"
#include "machine/variables.h"

#include <algorithm>
#include <span>

namespace metrify {

namespace {

using action = number_step::action;

/// What is known of a value ahead.
struct known_value {
    exponents units = {};
    const double* constant = nullptr; // its parts, where they have just been pushed
};

dim_value one_in(const exponents& units) {
    return {0, {1.0, 0.0, 0.0}, units};
}

/// Follows a statement. Each rule gives false where it doesn't know enough.
class statement_reader {
  public:
    statement_reader(const code_list& list, replay_statement& statement, number_code& code)
        : list_(list), statement_(statement), code_(code),
          nodes_(list.nodes().data() + statement.first_node, statement.nodes) {}

    bool read() {
        if (nodes_[0].opcode != OP_NOP)
            return false;
        for (at_ = 1; at_ < nodes_.size(); ++at_) {
            if (nodes_[at_].opcode == OP_POP_RESULT)
                return ends();
            if (!read_node(nodes_[at_]) || stack_.size() > most_numbers)
                return false;
        }
        return nodes_.size() == 1; // an empty statement heads a block
    }

  private:
    bool read_node(const stck_node& node);
    bool push_constant(const stck_node& node);
    bool push_variable(const var_entry& entry);
    bool operate(action what);
    bool raise(const known_value& base, const known_value& exponent);
    bool negate_top();
    bool assign_unit();
    bool call(const packed_call& made);

    std::uint32_t next_opcode() const { return at_ + 1 < nodes_.size() ? nodes_[at_ + 1].opcode : OP_NOP; }
    bool ends() {
        if (at_ + 1 != nodes_.size() || stack_.size() != 1)
            return false;
        statement_.units = stack_.back().units;
        return true;
    }
    void push(const exponents& units, const double* parts, bool is_constant) {
        code_.steps.push_back({action::push, 0, parts});
        stack_.push_back({units, is_constant ? parts : nullptr});
    }

    // Gives the last step another constant, that of an operator on the one it had, say.
    const double* replace_constant(const number& by) {
        code_.constants.push_front(by);
        return code_.steps.back().operand = &code_.constants.front().value;
    }

    const code_list& list_;
    replay_statement& statement_;
    number_code& code_;
    std::span<const stck_node> nodes_;
    std::size_t at_ = 0;
    std::vector<known_value> stack_;
};

bool statement_reader::read_node(const stck_node& node) {
    switch (node.opcode) {
    case OP_PUSH_VALUE:
        return push_constant(node);
    case OP_PUSH_VAR:
        return push_variable(list_.variable(node));
    case OP_PUSH_UNIT:
        return assign_unit();
    case OP_ADD:
    case OP_SUB:
    case OP_MUL:
    case OP_DIV:
    case OP_POW:
        return operate(static_cast<action>(node.opcode - OP_ADD + static_cast<std::uint32_t>(action::add)));
    case OP_NEGATE:
        return negate_top();
    case OP_SETVAR:
        // The one change that a statement makes is its last step: nothing can send it the long way then.
        statement_.target = &list_.variable(node);
        return next_opcode() == OP_POP_RESULT;
    default:
        return false;
    }
}

// The record with the numbers of a call stands ahead of it.
bool statement_reader::push_constant(const stck_node& node) {
    const dim_value& value = list_.value(node);
    if (list_.is_number(node)) {
        push({}, value.comp.data(), true);
        return true;
    }
    if (next_opcode() != OP_CALL_FUNC)
        return false;
    ++at_;
    return call(unpack_three_ints(value));
}

bool statement_reader::push_variable(const var_entry& entry) {
    if (entry.value.kind != 0)
        return false;
    // A variable that stands farther back is entered once more: the search is not to grow with the statement.
    constexpr std::size_t looked_at = 16;
    std::vector<number_variable>& all = code_.variables;
    const std::size_t count = std::min(all.size() - statement_.first_variable, looked_at);
    const std::span<const number_variable> latest(all.data() + (all.size() - count), count);
    if (std::none_of(latest.begin(), latest.end(),
                     [&](const number_variable& read) { return read.entry == &entry; }))
        all.push_back({&entry, entry.value.dim});
    push(entry.value.dim, entry.value.comp.data(), false);
    return true;
}

bool statement_reader::operate(action what) {
    if (stack_.size() < 2)
        return false;
    const known_value right = stack_.back();
    stack_.pop_back();
    known_value& left = stack_.back();
    dim_value units = one_in(left.units);
    switch (what) {
    case action::add:
    case action::subtract:
        // No zero is to take on the other's units: a number may be 0 now and another time not.
        if (!same_units_loose(units, one_in(right.units)))
            return false;
        break;
    case action::raise:
        if (!raise(left, right))
            return false;
        for (double& exponent : units.dim)
            exponent *= right.constant != nullptr ? *right.constant : 1.0;
        break;
    default:
        for (std::size_t i = 0; i < units.dim.size(); ++i)
            units.dim[i] += what == action::multiply ? right.units[i] : -right.units[i];
        normalize_dimensions(units);
    }
    left = {units.dim, nullptr};
    // A right operand that has just been pushed is taken from where it stands.
    number_step& last = code_.steps.back();
    if (last.what == action::push)
        last.what = what;
    else
        code_.steps.push_back({what, 0, nullptr});
    return true;
}

// The units of a power are known for an exponent that is, other than the 0 that takes the units from a 0, and
// for a base without any.
bool statement_reader::raise(const known_value& base, const known_value& exponent) {
    if (!is_dimensionless(one_in(exponent.units)))
        return false;
    return base.units == exponents{} || (exponent.constant != nullptr && *exponent.constant != 0.0);
}

bool statement_reader::negate_top() {
    if (stack_.empty())
        return false;
    known_value& top = stack_.back();
    if (top.constant == nullptr) {
        code_.steps.push_back({action::negate, 0, nullptr});
        return true;
    }
    number value = {top.constant[0], top.constant[1]};
    if (!negate(value))
        return false;
    top.constant = replace_constant(value);
    return true;
}

bool statement_reader::assign_unit() {
    const unit_scale& scale = list_.scale(nodes_[at_]);
    if (next_opcode() != OP_UNIT_ASSIGN || stack_.empty() || scale.factor == 0.0 ||
        scale.factor == infinity_sentinel || scale.offset == infinity_sentinel)
        return false;
    known_value& top = stack_.back();
    if (!is_dimensionless(one_in(top.units)))
        return false;
    ++at_;
    const number parts = {scale.offset, scale.factor};
    if (top.constant == nullptr) {
        code_.steps.push_back({action::assign_unit, 0, nullptr});
        replace_constant(parts);
    } else {
        number value = {top.constant[0], top.constant[1]};
        if (!assign_scale(value, parts))
            return false;
        replace_constant(value);
    }
    top = {scale.dim, nullptr};
    return true;
}

// The units of the function's value are those that it has for arguments of 1. They are looked at again after
// each call.
bool statement_reader::call(const packed_call& made) {
    const auto count = static_cast<std::size_t>(made.count);
    // A function that takes names is no formula: it works on the variables.
    if (made.call_class != 0 || stack_.size() < count)
        return false;
    code_.steps.push_back({action::call, code_.calls.size(), nullptr});
    code_.calls.push_back({made, code_.call_units.size()});
    compile_ctx ctx;
    work_text err;
    for (std::size_t i = stack_.size() - count; i < stack_.size(); ++i) {
        code_.call_units.push_back(stack_[i].units);
        push_value(one_in(stack_[i].units), ctx);
    }
    call_func_by_number(made.function, made.call_class, made.count, ctx, err.str);
    dim_value value;
    pop_value(value, ctx);
    code_.call_units.push_back(value.dim);
    stack_.resize(stack_.size() - count);
    stack_.push_back({value.dim, nullptr});
    return str_is_empty(err.str) && value.kind == 0;
}

} // namespace

void read_numbers(const code_list& list, replay_statement& statement, number_code& code) {
    statement.first_step = code.steps.size();
    statement.first_variable = code.variables.size();
    statement.has_steps = statement_reader(list, statement, code).read();
    statement.steps = code.steps.size() - statement.first_step;
    statement.variables = code.variables.size() - statement.first_variable;
}

} // namespace metrify
