#include "machine/calculator.h"

#include "base/thread_object.h"

#include <utility>

namespace metrify {

namespace {

thread_local calculator* in_use = nullptr;

} // namespace

calculator& current_calculator() {
    if (in_use == nullptr)
        in_use = &thread_object<calculator>();
    return *in_use;
}

unit_state& current_unit_state() {
    return current_calculator().units;
}

calculator_scope::calculator_scope(calculator& used) : outer_(std::exchange(in_use, &used)) {}

calculator_scope::~calculator_scope() {
    in_use = outer_;
}

void reset_calculator() {
    current_calculator().progress = {};
    current_calculator().statements = 0;
    reset_func_block();
    reset_solver_binding();
    reset_unit_state();
    reset_user_units();
    free_all_vars();
    free_user_units();
}

void release_calculator_memory() {
    reset_func_block();
    free_all_vars();
    free_user_units();
}

} // namespace metrify
