#pragma once

// The 89 built-in functions, gathered from the tables of the families, for the look-up, the call and the
// list for users.

#include "functions/builtin.h"

#include <span>
#include <vector>

namespace metrify {

struct function_row : function_facts {
    builtin run = nullptr;
};

/// All functions, by number from 1 on.
std::span<const function_row> all_functions();

/// Those of a chapter, in the order in which users see them.
std::vector<const function_row*> functions_in(family chapter);

} // namespace metrify
