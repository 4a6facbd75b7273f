#pragma once

// What a number program is read from: the units of a statement are followed through its instructions, with
// the variables in the units that they have at the time.

#include "machine/number_program.h"

namespace metrify {

/// Reads the steps of a statement whose instructions are known. It gets none where its values aren't all
/// scalars, or where their units, or whether they agree, may depend on the numbers.
void read_numbers(const code_list& list, replay_statement& statement, number_code& code);

} // namespace metrify
