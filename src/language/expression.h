#pragma once

// A recursive-descent parser of expressions without a syntax tree. As soon as both operands of an operator
// are on the operand stack, the operator is executed and, if instructions are being recorded, its instruction
// is appended.
//
//   expression := term { ( "+" | "-" ) term }
//   term       := factor { ( "*" | "/" ) factor }
//   factor     := primary { unit-expression | "^" primary }
//   primary    := number
//               | [ sign ] "[" [ expression { "," expression } ] "]"
//               | [ sign ] "(" expression ")"
//               | [ sign ] function "(" arguments ")"
//               | [ sign ] variable [ "[" indices "]" ]
//               | nothing
//
// All operators are left-associative, "^" included, and a sign binds tighter than "^".

#include "base/cursor.h"
#include "machine/operand_stack.h"

namespace metrify {

/// Resets the progress guard, which otherwise rejects every expression for the rest of the run once it has
/// rejected one.
void reset_expression_state();

/// Reads an expression and pushes its value. On failure the cursor is restored; err is empty if there is no
/// expression at the cursor and set if the expression is wrong.
bool compile_rhs(cursor& expptr, compile_ctx& ctx, text_str*& err);

/// True, with the message instead of any other, if the run is interrupted: what the expressions of its
/// statement have computed is of no use then, and so is a report that is due.
bool fails_as_interrupted(text_str*& err);

} // namespace metrify
