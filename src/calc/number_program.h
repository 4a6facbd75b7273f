#pragma once

// The short way through a replay: a statement whose values are all plain numbers needs no units. What it
// comes to is the same, to the last bit.

#include "calc/code_list.h"
#include "calc/operand_stack.h"

#include <cstddef>
#include <vector>

namespace metrify {

/// A list's instructions, from an OP_NOP or the list's head up to the next OP_NOP.
struct replay_statement {
    std::size_t first_node = 0, nodes = 0;
    bool is_last = false;

    // Where its values can all be plain numbers: its steps, the variables that it reads, and the one that it
    // sets at its end, if any.
    bool has_steps = false;
    std::size_t first_step = 0, steps = 0;
    std::size_t first_variable = 0, variables = 0;
    var_entry* target = nullptr;
};

/// A list made ready for many replays. It refers to the list, which must stay as it is.
class number_program {
  public:
    void prepare(const code_list& list);
    void clear();

    const std::vector<replay_statement>& statements() const { return statements_; }

    /// Runs a statement. Where a value has units or is a vector, or where there is something to report, it
    /// gives false and has changed nothing. Only the last statement's result is set. ctx is for calls.
    bool run(const replay_statement& statement, dim_value& result, compile_ctx& ctx, text_str*& err) const;

  private:
    // The binary operators in the order of their opcodes.
    enum class action { push, add, subtract, multiply, divide, raise, negate, call };

    /// What is pushed, or an operator's right operand, stands at `operand` and the place behind it; an
    /// operand that stands on the stack has none. `call` is a place among the calls.
    struct step {
        action what;
        std::size_t call;
        const double* operand;
    };

    bool read_statement(const code_list& list, replay_statement& statement);
    void read_operator(action what);
    bool read_call(const dim_value& record, std::size_t& depth);
    void read_variable(const var_entry& entry, std::size_t first_variable);

    std::vector<replay_statement> statements_;
    std::vector<step> steps_;
    std::vector<const var_entry*> variables_;
    std::vector<packed_call> calls_;
};

} // namespace metrify
