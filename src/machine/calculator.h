#pragma once

// The state that one calculator keeps from statement to statement. The functions of its parts use the current
// calculator of the calling thread. That is the thread's default calculator, unless a scope replaces it.

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
    variables_before before_statement;
    func_block block;
    solver_binding solver;
    progress_guard progress;
    int statements = 0;                     // number of the latest statement
    dim_value result;                       // of the latest statement that has succeeded
    bool has_result = false;                // a statement of the latest run has succeeded
    bool has_failed = false;                // a statement of the latest run has shown a message
    bool has_reported_interruption = false; // that message is the one of an interrupted run
};

/// The current calculator of the calling thread.
calculator& current_calculator();

/// Makes a calculator the current one of the calling thread while the scope lives.
class calculator_scope {
  public:
    explicit calculator_scope(calculator& used);
    ~calculator_scope();
    calculator_scope(const calculator_scope&) = delete;
    calculator_scope& operator=(const calculator_scope&) = delete;

  private:
    calculator* outer_;
};

/// Resets the current calculator at the start of a run. A pending report stays pending.
void reset_calculator();

/// Releases the memory of a run that has ended.
void release_calculator_memory();

} // namespace metrify
