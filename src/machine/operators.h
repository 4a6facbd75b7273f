#pragma once

// The operators on quantities. Each pops its operands from the stack, clears `err` on entry and pushes
// exactly one result, also on failure. Both the parser and a replay run them.
//
// A numerical failure is recognized only by the sentinel in comp[0] of an operand. Intentional: a result that
// overflows is not reported until another operator uses it.

#include "machine/operand_stack.h"

namespace metrify {

void stck_add(compile_ctx& ctx, text_str*& err);
void stck_subtract(compile_ctx& ctx, text_str*& err);
/// One of the two may be a vector.
void stck_multiply(compile_ctx& ctx, text_str*& err);
/// The left operand may be a vector. Dividing by 0 is reported as overflow.
void stck_divide(compile_ctx& ctx, text_str*& err);
/// The base must be a scalar, the exponent dimensionless; of a vector exponent the first component is used.
void stck_exponentiate(compile_ctx& ctx, text_str*& err);
void stck_negate(compile_ctx& ctx, text_str*& err);

/// Replaces a dimensionless number and the unit scale above it by a quantity in the base system.
void stck_unit_assignment(compile_ctx& ctx, text_str*& err);
/// Replaces a value and the unit scale above it by the plain number in that unit.
void stck_request_units(compile_ctx& ctx, text_str*& err);
/// Replaces the top 0 to 3 entries by a vector; missing components are 0.
void stck_make_vector(compile_ctx& ctx, int count, text_str*& err);

/// A temperature difference in a compound unit is a plain temperature, and an angle times a length a length.
void normalize_dimensions(dim_value& value);

} // namespace metrify
