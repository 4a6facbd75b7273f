#include "tests/functions/calling.h"

#include "language/driver.h"
#include "machine/function_dispatch.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace metrify::test {

std::string answer(std::string_view line) {
    const std::string program(line);
    const listing shown = interpret_dimensional_input_lines(program.c_str());
    std::string_view text = shown.view();
    text.remove_prefix(std::min(text.find('\n'), text.size()));
    constexpr std::string_view blanks = " \n";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos)
        return {};
    return std::string(text.substr(begin, text.find_last_not_of(blanks) + 1 - begin));
}

void expect_answers(std::span<const expectation> expectations) {
    for (const expectation& expected : expectations)
        EXPECT_EQ(answer(expected.line), expected.answer) << expected.line;
}

outcome call_number(std::int32_t number, const std::vector<dim_value>& given) {
    compile_ctx ctx;
    work_text err;
    push_value(scalar(12345.0), ctx);
    for (const dim_value& value : given)
        push_value(value, ctx);
    call_func_by_number(number, args_expressions, static_cast<std::int32_t>(given.size()), ctx, err.str);
    outcome result = {{}, std::string(err.view()), ctx.stack.depth()};
    pop_value(result.value, ctx);
    return result;
}

outcome call(std::string_view name, const std::vector<dim_value>& given) {
    const std::string text(name);
    cursor at(text.c_str());
    function_ref function;
    EXPECT_TRUE(lookup_function(at, function)) << name;
    return call_number(function.number, given);
}

dim_value scalar(double x, const exponents& dim) {
    return {0, {x}, dim};
}

dim_value vector(double x, double y, double z, const exponents& dim) {
    return {1, {x, y, z}, dim};
}

bool equal(const dim_value& a, const dim_value& b) {
    return a.kind == b.kind && a.comp == b.comp && a.dim == b.dim;
}

bool is_cleared(const dim_value& v) {
    return equal(v, dim_value());
}

void expect_refused(const outcome& result, const std::string& message) {
    EXPECT_EQ(result.err, message);
    EXPECT_TRUE(is_cleared(result.value)) << message;
    EXPECT_EQ(result.depth, 2U) << message;
}

} // namespace metrify::test
