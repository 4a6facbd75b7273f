#pragma once

// Programs whose block and variables stay, bound like those of a solving built-in function.

#include "language/driver.h"
#include "machine/func_block.h"
#include "machine/solver_binding.h"
#include "machine/variables.h"

#include <string>

namespace metrify_bench {

/// Keeps the block and the variables of the program, which a run would release at its end.
inline void run_program(const std::string& text) {
    metrify::interpret_dimensional_input_lines("1");
    static std::string kept;
    kept = text;
    metrify::work_text out;
    metrify::work_text err;
    metrify::run_lines("", metrify::cursor(kept.c_str()), out.str, err.str);
}

inline metrify::packed_reference variable(const std::string& name) {
    return {static_cast<std::int32_t>(metrify::find_var(name)->number), 0};
}

/// The block of a program as a function from x to y.
inline metrify::bound_function& bind_x_and_y(const std::string& program) {
    run_program(program);
    metrify::allocate_solver_binding(1, 1);
    metrify::record_independent(0, variable("x"));
    metrify::record_dependent(0, variable("y"));
    return metrify::bound_block();
}

} // namespace metrify_bench
