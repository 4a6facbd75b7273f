#pragma once

// The arithmetic between quantities. Each operator takes its operands from the stack, clears `err` on entry
// and pushes exactly one result, also when it fails. The parser calls them while it reads and the evaluator
// when a list is replayed, so a statement means the same in both.
//
// The one sign of a numerical failure is the sentinel in comp[0] of an operand. A result that overflows goes
// through unnoticed and is reported by the next operator that uses it.

#include "machine/operand_stack.h"

namespace metrify {

void stck_add(compile_ctx& ctx, text_str*& err);
void stck_subtract(compile_ctx& ctx, text_str*& err);
/// One of the two may be a vector.
void stck_multiply(compile_ctx& ctx, text_str*& err);
/// The left operand may be a vector. Dividing by 0 is reported as overflow.
void stck_divide(compile_ctx& ctx, text_str*& err);
/// The base must be a scalar, the exponent without dimension; of a vector as exponent the first component
/// counts.
void stck_exponentiate(compile_ctx& ctx, text_str*& err);
void stck_negate(compile_ctx& ctx, text_str*& err);

/// A bare number and the unit scale above it become a quantity in the base system.
void stck_unit_assignment(compile_ctx& ctx, text_str*& err);
/// A value and the unit scale above it become the plain number of that unit.
void stck_request_units(compile_ctx& ctx, text_str*& err);
/// The top 0 to 3 entries become a vector; components not given are 0.
void stck_make_vector(compile_ctx& ctx, int count, text_str*& err);

/// A temperature difference in a compound unit is a plain temperature, and an angle times a length a length.
void normalize_dimensions(dim_value& value);

} // namespace metrify
