#pragma once

// Replay of a compiled list, without the text: the inner loop of the solvers.

#include "machine/code_list.h"
#include "machine/number_program.h"
#include "machine/operand_stack.h"
#include "units/dim_value.h"

namespace metrify {

/// Runs a list on an operand stack of its own. result holds what the last statement came to. Stops at the
/// first instruction that leaves a message in err, with result as it stands then.
void eval_compiled_stck(dim_value& result, const code_list& list, text_str*& err);
/// The same for a list that has been prepared, on the stack of a ctx that records nothing. What stands on it
/// is dropped, its room is used again.
void eval_compiled_stck(dim_value& result, const code_list& list, const number_program& numbers,
                        compile_ctx& ctx, text_str*& err);

} // namespace metrify
