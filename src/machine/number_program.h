#pragma once

// The fast path of a replay. While the variables have the units that they had when a list was prepared, the
// units of all intermediate results of its scalar statements are known, and only numbers are computed. The
// results are the same to the last bit.

#include "machine/code_list.h"
#include "machine/operand_stack.h"

#include <cstddef>
#include <forward_list>
#include <vector>

namespace metrify {

/// One step of a statement, on a stack of numbers: an operator, or without one a push or a call.
struct number_step {
    number_handler operate; // null for a push or a call
    const double* operand;  // the two parts of the right operand or of the pushed number; null if the right
                            // operand is on the stack, and for a call
    std::size_t call;       // index of the call
};

/// A variable that a statement reads, with the units that it must have.
struct number_variable {
    const var_entry* entry;
    exponents units;
};

/// A call of a function. The units of its arguments, followed by the required units of its value, are stored
/// among the units of the calls.
struct number_call {
    packed_call record;
    std::size_t first_units;
};

/// Limit of the numbers on the stack of a statement.
constexpr std::size_t max_stack_depth = 32;

/// A list's instructions, from an OP_NOP or the list's head up to the next OP_NOP.
struct replay_statement {
    std::size_t first_node = 0, nodes = 0;
    bool is_last = false;

    // If it can run on numbers: its steps, the variables that it reads, the one that it sets at its end, if
    // any, and the units of its result.
    bool has_steps = false;
    std::size_t first_step = 0, steps = 0;
    std::size_t first_variable = 0, variables = 0;
    var_entry* target = nullptr;
    exponents units = {};
};

/// The data that the statements refer to.
struct number_code {
    std::vector<number_step> steps;
    std::vector<number_variable> variables;
    std::vector<number_call> calls;
    std::vector<exponents> call_units;
    std::forward_list<number> constants; // steps point to them
};

/// A list prepared for many replays. It refers to the list, which must not change.
class number_program {
  public:
    void prepare(const code_list& list);
    void clear() { *this = number_program(); }

    const std::vector<replay_statement>& statements() const { return statements_; }

    /// Runs a statement that has steps. Returns false, and changes nothing, if a variable has other units
    /// than before or is a vector, or if there is an error to report. Sets result for the last statement
    /// only. ctx is used by calls.
    bool run(const replay_statement& statement, dim_value& result, compile_ctx& ctx, text_str*& err) const;

  private:
    bool call(const number_call& made, number* arguments, compile_ctx& ctx, text_str*& err) const;

    std::vector<replay_statement> statements_;
    number_code code_;
};

} // namespace metrify
