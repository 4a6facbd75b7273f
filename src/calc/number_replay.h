#pragma once

// The short way through a replay: a statement whose values are all plain numbers needs no units. What it
// comes to is the same, to the last bit.

#include "calc/code_list.h"
#include "calc/operand_stack.h"

#include <span>

namespace metrify {

/// Runs the statement at the head of the instructions and gives how many of them it has taken. Where a value
/// has units or is a vector, or where there is something to report, it gives 0 and has changed nothing. ctx
/// is for calls.
std::size_t replay_numbers(std::span<const stck_node> nodes, const code_list& list, dim_value& result,
                           compile_ctx& ctx, text_str*& err);

} // namespace metrify
