#pragma once

// The parser of expressions, a recursive descent over the cursor without a syntax tree. As soon as an
// operator has both operands it is carried out on the operand stack and, if a list is being recorded, its
// instruction is appended.
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

/// Forgets the stop of the no-progress guard, which otherwise holds for the rest of the run.
void reset_expression_state();

/// Reads an expression. On success its value is on top of the stack and the cursor behind it. Otherwise the
/// cursor is restored; an empty err says that the text is no case for this rule, a set one that it is an
/// error.
bool compile_rhs(cursor& expptr, compile_ctx& ctx, text_str*& err);

} // namespace metrify
