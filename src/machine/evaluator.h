#pragma once

// Execution of instructions: one at a time for the parser, and a whole list without the text, which is the
// inner loop of the solvers.

#include "machine/code_list.h"
#include "machine/number_program.h"
#include "machine/operand_stack.h"
#include "units/dim_value.h"

namespace metrify {

/// Runs one instruction and records it if instructions are recorded, so that a replay does the same. False if
/// err is set afterwards.
bool run_and_record(opcode code, const payload& of, compile_ctx& ctx, text_str*& err);
inline bool run_and_record(opcode code, compile_ctx& ctx, text_str*& err) {
    return run_and_record(code, payload{}, ctx, err);
}
inline bool run_and_record(opcode code, const dim_value& value, compile_ctx& ctx, text_str*& err) {
    return run_and_record(code, payload{&value, nullptr, nullptr}, ctx, err);
}
inline bool run_and_record(opcode code, const unit_scale& scale, compile_ctx& ctx, text_str*& err) {
    return run_and_record(code, payload{nullptr, &scale, nullptr}, ctx, err);
}
inline bool run_and_record(opcode code, var_entry& variable, compile_ctx& ctx, text_str*& err) {
    return run_and_record(code, payload{nullptr, nullptr, &variable}, ctx, err);
}

/// Runs a list on an operand stack of its own. result receives the result of the last statement. Stops at the
/// first instruction that sets err; result is then what the instructions before it have left in it.
void eval_compiled_stck(dim_value& result, const code_list& list, text_str*& err);
/// The same for a prepared list, on the stack of a ctx that records nothing and receives the result. The
/// stack is cleared first; its memory is used again.
void eval_compiled_stck(const code_list& list, const number_program& numbers, compile_ctx& ctx,
                        text_str*& err);

} // namespace metrify
