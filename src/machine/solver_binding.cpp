#include "machine/solver_binding.h"

#include "base/thread_object.h"
#include "machine/evaluator.h"
#include "machine/func_block.h"
#include "machine/operand_stack.h"
#include "machine/variables.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace metrify {

namespace {

/// How the methods see an independent x.
enum class scale_mode {
    linear,
    log,          // ln(x) of a positive x
    log_negative, // ln(-x) of a negative x
};

std::uint32_t number_of(const packed_reference& reference) {
    return static_cast<std::uint32_t>(reference.number);
}

/// A variable, or a component of it, found once for all evaluations.
struct bound_variable {
    packed_reference reference = {};
    var_entry* entry = nullptr; // null where there is no such variable

    void bind(const packed_reference& to) {
        reference = to;
        entry = find_var_by_num(number_of(to));
    }

    /// 0 for a variable that can't be read.
    double read(text_str*& err) const {
        if (entry != nullptr)
            return entry->value.comp[place()];
        getvar_by_num(number_of(reference), err); // says so
        return 0.0;
    }

    void write(double component, text_str*& err) const {
        if (entry != nullptr)
            entry->value.comp[place()] = component;
        else
            getvar_by_num(number_of(reference), err); // says so
    }

  private:
    // A whole variable stands for its first component.
    std::size_t place() const {
        const bool is_later = reference.component == 2 || reference.component == 3;
        return is_later ? static_cast<std::size_t>(reference.component - 1) : 0;
    }
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
    compile_ctx replay_;      // kept: an evaluation finds the room that the one before has made
    dim_value unused_result_; // what counts is what the block's lines assign
};

struct solver_binding {
    block_function block;
    report_kind due = report_kind::none;
};

solver_binding& binding() {
    return thread_object<solver_binding>();
}

void release_independents(const block_function& block) {
    for (const independent_variable& input : block.inputs)
        hold_var(number_of(input.variable.reference), false);
}

void block_function::read_solver_vector(double* x, text_str*& err) const {
    for (const independent_variable& input : inputs) {
        const double component = input.variable.read(err);
        switch (input.mode) {
        case scale_mode::linear:
            *x++ = component;
            break;
        case scale_mode::log:
            *x++ = std::log(component);
            break;
        case scale_mode::log_negative:
            *x++ = std::log(-component);
            break;
        }
    }
}

double component_of(double x, scale_mode mode) {
    switch (mode) {
    case scale_mode::log:
        return std::exp(x);
    case scale_mode::log_negative:
        return -std::exp(x);
    default:
        return x;
    }
}

void block_function::evaluate_function(const double* x, double* y, text_str*& err) {
    std::fill_n(y, outputs.size(), 0.0);
    for (const independent_variable& input : inputs) {
        if (!str_is_empty(err))
            return;
        input.variable.write(component_of(*x++, input.mode), err);
    }
    if (!str_is_empty(err))
        return;
    eval_compiled_stck(unused_result_, block_code(), block_numbers(), replay_, err);
    if (!str_is_empty(err))
        return;
    for (const bound_variable& output : outputs)
        *y++ = objective_sign * output.read(err);
}

void check_dependent(const packed_reference& reference, text_str*& err) {
    const dim_value value = getvar_by_num(number_of(reference), err);
    if (!str_is_empty(err) || value.kind == 0 || reference.component != 0)
        return;
    str_append_three(&err, "ERROR:  Dependent arg ", *varname_by_num(number_of(reference), err),
                     " must be a scalar.\n");
}

} // namespace

void reset_solver_binding() {
    block_function& block = binding().block;
    block.inputs.clear();
    block.outputs.clear();
    block.objective_sign = 1.0;
}

void allocate_solver_binding(std::size_t independents, std::size_t dependents) {
    block_function& block = binding().block;
    release_independents(block);
    block.inputs.assign(independents, {});
    block.outputs.assign(dependents, {});
}

void teardown_solver_binding() {
    allocate_solver_binding(0, 0);
    binding().due = report_kind::none;
}

void record_independent(std::size_t i, const packed_reference& reference) {
    binding().block.inputs[i].variable.bind(reference);
    hold_var(number_of(reference), true);
}

void record_dependent(std::size_t i, const packed_reference& reference) {
    binding().block.outputs[i].bind(reference);
}

void save_start_values(text_str*& err) {
    for (independent_variable& input : binding().block.inputs) {
        input.start = input.variable.read(err);
        if (!str_is_empty(err))
            return;
    }
}

void restore_start_values(text_str*& err) {
    for (const independent_variable& input : binding().block.inputs)
        input.variable.write(input.start, err);
}

void check_bound_variables(text_str*& err) {
    const block_function& block = binding().block;
    for (std::size_t i = 0; i < block.inputs.size() && str_is_empty(err); ++i)
        getvar_by_num(number_of(block.inputs[i].variable.reference), err);
    for (std::size_t i = 0; i < block.outputs.size() && str_is_empty(err); ++i)
        check_dependent(block.outputs[i].reference, err);
}

void set_scale_modes(bool use_logs, text_str*& err) {
    for (independent_variable& input : binding().block.inputs) {
        const double component = input.variable.read(err);
        input.mode = scale_mode::linear;
        if (use_logs && component > 0.0)
            input.mode = scale_mode::log;
        else if (use_logs && component < 0.0)
            input.mode = scale_mode::log_negative;
    }
}

void negate_objective(bool negated) {
    binding().block.objective_sign = negated ? -1.0 : 1.0;
}

void set_pending_report(report_kind report) {
    binding().due = report;
}

report_kind pending_report() {
    return binding().due;
}

bound_function& bound_block() {
    return binding().block;
}

} // namespace metrify
