#include "functions/special_functions.h"

#include "base/interruption.h"
#include "functions/scalar_functions.h"

namespace metrify {

void run_function(const special_function& function, compile_ctx& ctx, text_str*& err) {
    const std::size_t count = argument_count(function.about);
    const arguments given(count, ctx);
    const auto refuse = [&](const refusal& message) {
        append_refusal(err, function.about.name, message);
        given.replace_by(dim_value());
    };
    using rule = special_arguments_rule;
    special_arguments x = {};
    bool any_sentinel = false;
    for (std::size_t i = count; i > 0; --i) {
        const dim_value& argument = given[i - 1];
        if (argument.kind != 0)
            return refuse(refuses_vectors.message);
        if (!is_dimensionless(argument))
            return refuse(refuses_dimensions.message);
        x[i - 1] = argument.comp[0];
        const bool is_tested = i < count || function.rule != rule::last_may_be_sentinel;
        any_sentinel = any_sentinel || (is_tested && x[i - 1] == infinity_sentinel);
    }
    if (function.rule == rule::first_is_integer && std::floor(x[0]) != x[0]) {
        append(err, "ERROR:  Arg n must be integer in ", function.about.name, "().\n");
        return given.replace_by(dim_value());
    }
    // One line may call thousands of functions, each of which takes up to some milliseconds.
    const bool is_computed = !any_sentinel && !is_interrupted_at_long_step();
    given.replace_by(scalar_value(is_computed ? function.value(x, err) : 0.0));
}

} // namespace metrify
