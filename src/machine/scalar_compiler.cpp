#include "machine/scalar_compiler.h"

#include "machine/function_dispatch.h"
#include "machine/operators.h"
#include "machine/variables.h"

#include <algorithm>
#include <span>

namespace metrify {

namespace {

/// What is known of a value before the statement runs.
struct known_value {
    exponents units = {};
    const double* constant = nullptr; // its two parts, if the last step has pushed them
};

dim_value one_in(const exponents& units) {
    return {0, {1.0, 0.0, 0.0}, units};
}

bool is_push(const number_step& step) {
    return step.operate == nullptr && step.operand != nullptr;
}

/// Compiles one statement. Each rule returns false if too little is known to compile it.
class scalar_compiler {
  public:
    scalar_compiler(const code_list& list, replay_statement& statement, number_code& code)
        : list_(list), statement_(statement), code_(code),
          nodes_(list.nodes().data() + statement.first_node, statement.nodes) {}

    bool compile() {
        if (nodes_[0].opcode != OP_NOP)
            return false;
        for (at_ = 1; at_ < nodes_.size(); ++at_) {
            if (nodes_[at_].opcode == OP_POP_RESULT)
                return ends();
            if (!compile_node(nodes_[at_]) || stack_.size() > max_stack_depth)
                return false;
        }
        return nodes_.size() == 1; // an empty statement heads a block
    }

  private:
    bool compile_node(const stck_node& node);
    bool push_constant(const stck_node& node);
    bool push_variable(const var_entry& entry);
    bool operate(const opcode_row& row);
    bool has_known_units(const known_value& base, const known_value& exponent) const;
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
        code_.steps.push_back({nullptr, parts, 0});
        stack_.push_back({units, is_constant ? parts : nullptr});
    }

    // Sets the constant of the last step, for example to the result of an operator on the constant it had.
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

bool scalar_compiler::compile_node(const stck_node& node) {
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
        return operate(opcode_table[node.opcode]);
    case OP_NEGATE:
        return negate_top();
    case OP_SETVAR:
        // The assignment comes last: after it no step can fail, and the statement is not run a second time.
        statement_.target = &list_.variable(node);
        return next_opcode() == OP_POP_RESULT;
    default:
        return false;
    }
}

// A constant can be the record of a call, which follows it.
bool scalar_compiler::push_constant(const stck_node& node) {
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

bool scalar_compiler::push_variable(const var_entry& entry) {
    if (entry.value.kind != 0)
        return false;
    // Only the latest entries are searched, so that the time stays linear. An older variable is entered
    // again.
    constexpr std::size_t searched = 16;
    std::vector<number_variable>& all = code_.variables;
    const std::size_t count = std::min(all.size() - statement_.first_variable, searched);
    const std::span<const number_variable> latest(all.data() + (all.size() - count), count);
    if (std::none_of(latest.begin(), latest.end(),
                     [&](const number_variable& read) { return read.entry == &entry; }))
        all.push_back({&entry, entry.value.dim});
    push(entry.value.dim, entry.value.comp.data(), false);
    return true;
}

bool scalar_compiler::operate(const opcode_row& row) {
    if (stack_.size() < static_cast<std::size_t>(row.pops))
        return false;
    const known_value right = stack_.back();
    stack_.pop_back();
    known_value& left = stack_.back();
    dim_value units = one_in(left.units);
    switch (row.code) {
    case OP_ADD:
    case OP_SUB:
        // A zero would take on the other's units, but the number need not be 0 in every replay.
        if (!same_units_loose(units, one_in(right.units)))
            return false;
        break;
    case OP_POW:
        if (!has_known_units(left, right))
            return false;
        for (double& exponent : units.dim)
            exponent *= right.constant != nullptr ? *right.constant : 1.0;
        break;
    default:
        for (std::size_t i = 0; i < units.dim.size(); ++i)
            units.dim[i] += row.code == OP_MUL ? right.units[i] : -right.units[i];
        normalize_dimensions(units);
    }
    left = {units.dim, nullptr};
    // A right operand that the last step pushes becomes an operand of the operator's step.
    number_step& last = code_.steps.back();
    if (is_push(last))
        last.operate = row.on_numbers;
    else
        code_.steps.push_back({row.on_numbers, nullptr, 0});
    return true;
}

// The units of a power are known if the exponent is a constant, or if the base has no units. A constant 0 is
// excluded: 0 to the power 0 loses its units.
bool scalar_compiler::has_known_units(const known_value& base, const known_value& exponent) const {
    if (!is_dimensionless(one_in(exponent.units)))
        return false;
    return base.units == exponents{} || (exponent.constant != nullptr && *exponent.constant != 0.0);
}

bool scalar_compiler::negate_top() {
    if (stack_.empty())
        return false;
    known_value& top = stack_.back();
    if (top.constant == nullptr) {
        static constexpr double ignored[2] = {};
        code_.steps.push_back({opcode_table[OP_NEGATE].on_numbers, ignored, 0});
        return true;
    }
    number value = {top.constant[0], top.constant[1]};
    if (!negate(value))
        return false;
    top.constant = replace_constant(value);
    return true;
}

bool scalar_compiler::assign_unit() {
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
        code_.steps.push_back({opcode_table[OP_UNIT_ASSIGN].on_numbers, nullptr, 0});
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

// The units of the function's value are those for arguments of 1. They are checked again after each call.
bool scalar_compiler::call(const packed_call& made) {
    const auto count = static_cast<std::size_t>(made.count);
    // A function that takes names of variables can change them.
    if (made.call_class != 0 || stack_.size() < count)
        return false;
    code_.steps.push_back({nullptr, nullptr, code_.calls.size()});
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

void compile_scalars(const code_list& list, replay_statement& statement, number_code& code) {
    statement.first_step = code.steps.size();
    statement.first_variable = code.variables.size();
    statement.has_steps = scalar_compiler(list, statement, code).compile();
    statement.steps = code.steps.size() - statement.first_step;
    statement.variables = code.variables.size() - statement.first_variable;
}

} // namespace metrify
