#include "functions/solving_functions.h"

#include "base/failure.h"
#include "machine/func_block.h"
#include "machine/solver_binding.h"
#include "machine/variables.h"
#include "numerics/solve/minimise.h"
#include "numerics/solve/multi_dim_root.h"
#include "numerics/solve/one_dim_root.h"

#include <array>

namespace metrify {

namespace {

packed_reference pop_reference(compile_ctx& ctx) {
    dim_value reference;
    pop_value(reference, ctx);
    return unpack_two_ints(reference);
}

/// Arguments are taken off the stack last first.
void pop_independents(std::int32_t count, compile_ctx& ctx) {
    for (std::int32_t i = count; i-- > 0;)
        record_independent(static_cast<std::size_t>(i), pop_reference(ctx));
}

void pop_dependents(std::int32_t count, compile_ctx& ctx) {
    for (std::int32_t i = count; i-- > 0;)
        record_dependent(static_cast<std::size_t>(i), pop_reference(ctx));
}

bool is_block_ready(std::string_view name, text_str*& err) {
    if (is_definition_open())
        append(err, "ERROR:  ", name, "() cannot be called within a function definition.\n");
    else if (!is_block_closed())
        append(err, "ERROR:  Function not defined.\n");
    else
        return true;
    return false;
}

bool are_paired(std::string_view refusal, std::int32_t count, compile_ctx& ctx, text_str*& err) {
    if (count % 2 == 0)
        return true;
    replace_by_cleared_value(count, ctx);
    append(err, refusal);
    return false;
}

/// Pops the references, pushes the result, and saves the start values. After a failure the binding stays
/// active.
bool bind_arguments(std::int32_t independents, std::int32_t dependents, compile_ctx& ctx, text_str*& err) {
    allocate_solver_binding(static_cast<std::size_t>(independents), static_cast<std::size_t>(dependents));
    pop_independents(independents, ctx);
    pop_dependents(dependents, ctx);
    push_value(dim_value(), ctx);
    save_start_values(err);
    if (str_is_empty(err))
        check_bound_variables(err);
    return str_is_empty(err);
}

/// Prepares another attempt from the start values.
void start_again(bool use_logs, text_str*& err) {
    str_clear(&err);
    restore_start_values(err);
    set_scale_modes(use_logs, err);
}

void solve_one_pair(text_str*& err) {
    set_scale_modes(false, err);
    solve_one_dim(bound_block(), err);
    if (!str_is_empty(err)) {
        start_again(true, err);
        solve_one_dim(bound_block(), err);
    }
    if (!str_is_empty(err))
        restore_start_values(err);
}

void solve_several_pairs(text_str*& err) {
    struct attempt {
        bool use_logs, use_broydn;
    };
    constexpr std::array<attempt, 4> attempts = {
        {{false, true}, {false, false}, {true, true}, {true, false}}};
    for (const attempt& next : attempts) {
        start_again(next.use_logs, err);
        std::uint32_t check = 0;
        solve_multi_dim(bound_block(), check, next.use_broydn, err);
        if (str_is_empty(err) && check != 0)
            return;
    }
    restore_start_values(err);
    replace_message(err, "ERROR:  Solve no solution found.\n");
}

void find_extreme(bool can_use_logs, report_kind report, text_str*& err) {
    set_scale_modes(false, err);
    minimise(bound_block(), err);
    if (!str_is_empty(err) && can_use_logs) {
        start_again(true, err);
        minimise(bound_block(), err);
    }
    if (!str_is_empty(err)) {
        restore_start_values(err);
        teardown_solver_binding();
    } else {
        set_pending_report(report);
    }
}

} // namespace

bool can_run_block(std::string_view name, std::int32_t count, compile_ctx& ctx, text_str*& err) {
    if (is_block_ready(name, err)) {
        keep_all_variables();
        return true;
    }
    replace_by_cleared_value(count, ctx);
    return false;
}

void run_solve(std::int32_t count, compile_ctx& ctx, text_str*& err) {
    if (!are_paired("ERROR:  Solve() requires an even number of args.\n", count, ctx, err))
        return;
    const std::int32_t pairs = count / 2;
    if (!bind_arguments(pairs, pairs, ctx, err))
        return;
    if (pairs == 1)
        solve_one_pair(err);
    else
        solve_several_pairs(err);
    // Also due if nothing has been found: the next statement that succeeds writes it.
    set_pending_report(report_kind::solve);
}

void run_fmin(std::int32_t count, compile_ctx& ctx, text_str*& err) {
    if (!bind_arguments(count - 1, 1, ctx, err))
        return;
    // Intentional: a minimum of several variables gets no second attempt, unlike a maximum.
    const bool is_of_one = count == 2;
    find_extreme(is_of_one, report_kind::fmin, err);
}

void run_fmax(std::int32_t count, compile_ctx& ctx, text_str*& err) {
    // Intentional: if the arguments can't be bound, the sign stays negated for the rest of the run.
    negate_objective(true);
    if (!bind_arguments(count - 1, 1, ctx, err))
        return;
    find_extreme(true, report_kind::fmax, err);
    negate_objective(false);
}

void run_func(std::int32_t count, compile_ctx& ctx, text_str*& err) {
    if (!are_paired("ERROR:  func() requires an even number of args.\n", count, ctx, err))
        return;
    const std::int32_t pairs = count / 2;
    allocate_solver_binding(static_cast<std::size_t>(pairs), 0);
    for (std::int32_t i = pairs; i-- > 0;) {
        dim_value value;
        pop_value(value, ctx);
        const packed_reference reference = pop_reference(ctx);
        record_independent(static_cast<std::size_t>(i), reference);
        setvar_by_num(static_cast<std::uint32_t>(reference.number), value, err);
    }
    push_value(dim_value(), ctx);
    set_pending_report(report_kind::func);
}

} // namespace metrify
