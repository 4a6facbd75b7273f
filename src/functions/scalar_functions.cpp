#include "functions/scalar_functions.h"

namespace metrify {

void run_function(const formula_function& function, compile_ctx& ctx, text_str*& err) {
    const arguments given(1, ctx);
    const double x = given[0].comp[0];
    const formula_limits& limits = function.limits;
    const auto refuse = [&](const refusal& message) {
        append_refusal(err, function.about.name, message);
        given.replace_by(dim_value());
    };
    if (given[0].kind != 0)
        return refuse(refuses_vectors.message);
    if (!is_dimensionless(given[0]))
        return refuse(refuses_dimensions.message);
    const bool is_excluded = limits.excludes != nullptr && limits.excludes(x);
    if (is_excluded && limits.then == outside::is_refused)
        return refuse(limits.message);
    if (x == infinity_sentinel)
        return given.replace_by(dim_value());
    given.replace_by(scalar_value(is_excluded ? infinity_sentinel : function.formula(x),
                                  function.result == gives::radians ? in_radians : exponents{}));
}

bool has_dimensions(arguments a) {
    return !is_dimensionless(a[0]);
}

} // namespace metrify
