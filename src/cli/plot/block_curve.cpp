#include "cli/plot/block_curve.h"

#include "base/text_str.h"
#include "machine/solver_binding.h"
#include "machine/variables.h"
#include "units/unit_rendering.h"

namespace metrify {

namespace {

packed_reference reference_to(std::string_view variable, text_str*& err) {
    packed_reference reference = {};
    reference.number = static_cast<std::int32_t>(varnum_by_name(variable, err));
    return reference;
}

} // namespace

block_curve::~block_curve() {
    teardown_solver_binding();
}

std::string block_curve::bind(std::string_view independent, const std::vector<std::string>& dependents) {
    work_text err;
    allocate_solver_binding(1, dependents.size());
    record_independent(0, reference_to(independent, err.str));
    for (std::size_t i = 0; i < dependents.size(); ++i)
        record_dependent(i, reference_to(dependents[i], err.str));
    if (str_is_empty(err.str))
        set_scale_modes(false, err.str);
    if (str_is_empty(err.str))
        check_bound_variables(err.str);
    return std::string(err.view());
}

std::string block_curve::evaluate(double x, std::vector<double>& y) const {
    work_text err;
    y.resize(static_cast<std::size_t>(bound_block().dependents()));
    bound_block().evaluate_function(&x, y.data(), err.str);
    return std::string(err.view());
}

std::string base_units_of(std::string_view variable) {
    const var_entry* const entry = find_var(variable);
    work_text units;
    work_text err;
    if (entry != nullptr)
        render_units(system_MKS, entry->value.dim, units.str, err.str);
    return std::string(units.view());
}

} // namespace metrify
