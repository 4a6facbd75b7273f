#pragma once

// The 89 built-in functions: one table that the look-up, the call and the list for users read.

#include "functions/builtin.h"
#include "machine/function_dispatch.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace metrify {

struct function_row {
    std::int32_t number;
    std::string_view name;
    int arguments;
    bool exact; // false: that many or more
    std::string_view name_in_count_message;
    std::int32_t mode; // arg_mode
    builtin run;
};

/// All functions, by number from 1 on.
std::span<const function_row> all_functions();

} // namespace metrify
