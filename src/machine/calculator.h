#pragma once

// All that one calculator keeps from statement to statement. The functions of the parts work on the
// calculator in use on the calling thread. That is the thread's own one, unless a scope puts another one in
// its place.

#include "machine/func_block.h"
#include "machine/solver_binding.h"
#include "machine/variables.h"
#include "units/unit_state.h"

namespace metrify {

/// Counts the calls of the expression parser that start at one position.
struct progress_guard {
    int count = 0;
    const char* position = nullptr;
};

struct calculator {
    unit_state units;
    variable_store variables;
    func_block block;
    solver_binding solver;
    progress_guard progress;
    int statements = 0; // number of the latest statement
};

/// The calculator in use on the calling thread.
calculator& current_calculator();

/// Puts a calculator in use on the calling thread while the scope lives.
class calculator_scope {
  public:
    explicit calculator_scope(calculator& used);
    ~calculator_scope();
    calculator_scope(const calculator_scope&) = delete;
    calculator_scope& operator=(const calculator_scope&) = delete;

  private:
    calculator* outer_;
};

/// Empties the calculator in use at the start of a run. A report that is due stays due.
void reset_calculator();

/// Releases the memory of a run that has ended.
void release_calculator_memory();

} // namespace metrify
