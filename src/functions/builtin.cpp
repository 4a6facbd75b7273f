#include "functions/builtin.h"

#include <limits>

namespace metrify {

bool check_arg_count(std::string_view name, bool exact, std::int32_t expected, std::int32_t given,
                     compile_ctx& ctx, text_str*& err) {
    str_clear(&err);
    if (exact ? given == expected : given >= expected)
        return true;
    replace_by_cleared_value(given, ctx);
    append(err, "ERROR:  Function ", name, " takes ", expected);
    // Intentional: there is no blank between the number and the word.
    append(err, expected == 1 ? "argument.\n" : "arguments.\n");
    return false;
}

void replace_by_cleared_value(std::int32_t given, compile_ctx& ctx) {
    dim_value dropped;
    for (std::int32_t i = 0; i < given; ++i)
        pop_value(dropped, ctx);
    push_value(dim_value(), ctx);
}

void append_refusal(text_str*& err, std::string_view name, const refusal& message) {
    append(err, "ERROR:  ", message.before, name, "()", message.after, ".\n");
}

void run_function(const value_function& function, compile_ctx& ctx, text_str*& err) {
    const arguments given(argument_count(function.about), ctx);
    for (const argument_test& test : function.tests) {
        if (test.fails == nullptr)
            break;
        if (test.fails(given)) {
            append_refusal(err, function.about.name_in_refusals(), test.message);
            given.replace_by(scalar_value(test.result));
            return;
        }
    }
    given.replace_by(function.result(given));
}

bool any_scalar(arguments a) {
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i].kind == 0)
            return true;
    return false;
}

bool any_vector(arguments a) {
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i].kind != 0)
            return true;
    return false;
}

std::int32_t truncate_to_int32(double x) {
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t greatest = std::numeric_limits<std::int32_t>::max();
    const bool in_range = x > least - 1.0 && x < greatest + 1.0;
    return in_range ? static_cast<std::int32_t>(x) : least;
}

} // namespace metrify
