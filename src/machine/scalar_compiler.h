#pragma once

// Compiles a statement's instructions into steps on plain numbers. The units of all intermediate results are
// determined once, from the units that the variables have at this time.

#include "machine/number_program.h"

namespace metrify {

/// Sets the steps of a statement whose instructions are known. It has none if a value is not a scalar, or if
/// units, or whether they agree, can depend on the numbers.
void compile_scalars(const code_list& list, replay_statement& statement, number_code& code);

} // namespace metrify
