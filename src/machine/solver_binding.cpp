#include "machine/solver_binding.h"

#include "base/interruption.h"
#include "machine/calculator.h"
#include "machine/evaluator.h"

#include <algorithm>
#include <cmath>

namespace metrify {

namespace {

std::uint32_t number_of(const packed_reference& reference) {
    return static_cast<std::uint32_t>(reference.number);
}

solver_binding& binding() {
    return current_calculator().solver;
}

void release_independents(const block_function& block) {
    for (const independent_variable& input : block.inputs)
        hold_var(number_of(input.variable.reference), false);
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

void check_dependent(const packed_reference& reference, text_str*& err) {
    const dim_value value = getvar_by_num(number_of(reference), err);
    if (!str_is_empty(err) || value.kind == 0 || reference.component != 0)
        return;
    append(err, "ERROR:  Dependent arg ", *varname_by_num(number_of(reference), err), " must be a scalar.\n");
}

} // namespace

void bound_variable::bind(const packed_reference& to) {
    reference = to;
    entry = find_var_by_num(number_of(to));
}

double bound_variable::read(text_str*& err) const {
    if (entry != nullptr)
        return entry->value.comp[component_index()];
    getvar_by_num(number_of(reference), err); // reports that there is none
    return 0.0;
}

void bound_variable::write(double component, text_str*& err) const {
    if (entry != nullptr)
        entry->value.comp[component_index()] = component;
    else
        getvar_by_num(number_of(reference), err); // reports that there is none
}

// A whole variable is used by its first component.
std::size_t bound_variable::component_index() const {
    const bool is_later = reference.component == 2 || reference.component == 3;
    return is_later ? static_cast<std::size_t>(reference.component - 1) : 0;
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

void block_function::evaluate_function(const double* x, double* y, text_str*& err) {
    if (is_interrupted_at_long_step())
        append(err, interruption_message);
    for (const independent_variable& input : inputs) {
        if (!str_is_empty(err))
            break;
        input.variable.write(component_of(*x++, input.mode), err);
    }
    if (str_is_empty(err))
        eval_compiled_stck(block_code(), block_numbers(), replay_, err);
    if (!str_is_empty(err)) {
        std::fill_n(y, outputs.size(), 0.0);
        return;
    }
    for (const bound_variable& output : outputs)
        *y++ = objective_sign * output.read(err);
}

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
