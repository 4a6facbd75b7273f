#pragma once

// The problem of a solving built-in function: the independent and the dependent variables, and the pending
// report. It connects the variables with the numerical methods, which use plain numbers.

#include "machine/operand_stack.h"
#include "machine/variables.h"
#include "numerics/solve/bound_function.h"
#include "units/dim_value.h"

#include <cstddef>
#include <vector>

namespace metrify {

/// The listing of the block that the next successful statement has to write.
enum class report_kind { none, func, solve, fmin, fmax };

/// How the methods represent an independent variable x.
enum class scale_mode {
    linear,
    log,          // ln(x) of a positive x
    log_negative, // ln(-x) of a negative x
};

/// A variable, or a component of it, looked up once for all evaluations.
struct bound_variable {
    packed_reference reference = {};
    var_entry* entry = nullptr; // null if there is no such variable

    void bind(const packed_reference& to);
    /// 0 for a variable that cannot be read.
    double read(text_str*& err) const;
    void write(double component, text_str*& err) const;

  private:
    std::size_t component_index() const;
};

struct independent_variable {
    bound_variable variable;
    scale_mode mode = scale_mode::linear;
    double start = 0.0;
};

class block_function : public bound_function {
  public:
    long independents() const override { return static_cast<long>(inputs.size()); }
    long dependents() const override { return static_cast<long>(outputs.size()); }
    bool is_negated() const override { return objective_sign < 0.0; }
    void read_solver_vector(double* x, text_str*& err) const override;
    void evaluate_function(const double* x, double* y, text_str*& err) override;

    std::vector<independent_variable> inputs;
    std::vector<bound_variable> outputs;
    double objective_sign = 1.0;

  private:
    compile_ctx replay_; // kept so that evaluations reuse its memory; its result is not used
};

struct solver_binding {
    block_function block;
    report_kind due = report_kind::none;
};

/// Removes the binding at the start of a run. Intentional: a pending report stays pending, in this run or the
/// thread's next one, until the teardown.
void reset_solver_binding();

/// Replaces the binding by a new one.
void allocate_solver_binding(std::size_t independents, std::size_t dependents);
/// Removes the binding and clears the pending report.
void teardown_solver_binding();

// Record a variable, or one component of it, at an index from 0. An independent variable is held while the
// binding exists: assignments do not change it. The variable number 0 is an unknown variable.

void record_independent(std::size_t i, const packed_reference& reference);
void record_dependent(std::size_t i, const packed_reference& reference);

/// Saves the values of the independent variables. Stops at a variable that cannot be read.
void save_start_values(text_str*& err);
void restore_start_values(text_str*& err);
/// Checks that every variable can be read and that every dependent is one number. Stops at the first error.
void check_bound_variables(text_str*& err);

/// Whether the methods use the independents themselves or the logarithms of their magnitudes. One that is 0
/// is used itself in both cases.
void set_scale_modes(bool use_logs, text_str*& err);

/// Whether the methods see the negated dependents, so that a minimizer finds the maximum.
void negate_objective(bool negated);

void set_pending_report(report_kind report);
report_kind pending_report();

/// The block as a function from the independents to the dependents of the current binding.
bound_function& bound_block();

} // namespace metrify
