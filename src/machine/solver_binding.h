#pragma once

// What a solving built-in is at work on: which variables are independent, which are dependent, and the report
// that is due. This is the bridge between the variables and the methods, which see plain numbers.

#include "machine/operand_stack.h"
#include "machine/variables.h"
#include "numerics/solve/bound_function.h"
#include "units/dim_value.h"

#include <cstddef>
#include <vector>

namespace metrify {

/// The listing of the block that the next successful statement writes.
enum class report_kind { none, func, solve, fmin, fmax };

/// How the methods see an independent x.
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
    /// 0 for a variable that can't be read.
    double read(text_str*& err) const;
    void write(double component, text_str*& err) const;

  private:
    std::size_t place() const;
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
    compile_ctx replay_;      // kept so that evaluations reuse its memory
    dim_value unused_result_; // the block's assignments are what counts
};

struct solver_binding {
    block_function block;
    report_kind due = report_kind::none;
};

/// At a run's start: no binding, and dependents as they are. A report that is due stays due, in this run or
/// the thread's next one: only the teardown clears it.
void reset_solver_binding();

/// A new binding in the place of an old one.
void allocate_solver_binding(std::size_t independents, std::size_t dependents);
/// Ends the binding and clears the report that is due.
void teardown_solver_binding();

// Enter a variable, or one component of it, at a place counted from 0. While the binding lasts an independent
// is held: an assignment leaves it as it is. A variable number of 0 is no variable's.

void record_independent(std::size_t i, const packed_reference& reference);
void record_dependent(std::size_t i, const packed_reference& reference);

/// Keeps the independents' present numbers. Stops at a variable that can't be read.
void save_start_values(text_str*& err);
void restore_start_values(text_str*& err);
/// Sees to it that every variable can be read and that every dependent is one number. Stops at the first that
/// isn't.
void check_bound_variables(text_str*& err);

/// Whether the methods see the independents as they are or by the logarithms of their magnitudes. One that is
/// 0 is seen as it is either way.
void set_scale_modes(bool use_logs, text_str*& err);

/// Whether the methods see the dependents with their signs turned: what is largest is smallest then.
void negate_objective(bool negated);

void set_pending_report(report_kind report);
report_kind pending_report();

/// The block as a function of the independents with the dependents as its values, as the binding says at the
/// time of a call.
bound_function& bound_block();

} // namespace metrify
