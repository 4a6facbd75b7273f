#include "conversion/conversion_plan.h"

#include "base/cursor.h"
#include "base/text_str.h"
#include "language/assignment.h"
#include "machine/calculator.h"
#include "machine/operators.h"
#include "units/default_system.h"
#include "units/plain_units.h"
#include "units/unit_expression.h"
#include "units/unit_rendering.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace metrify {

namespace {

// What the language says about a number with this text after it. It is compiled on a calculator of its own,
// so that a call of a function in the text changes nothing; that one knows the same units.
void report_source(std::string_view from, text_str*& err) {
    auto own = std::make_unique<calculator>();
    named_list<user_unit>& known = current_unit_state().user_units.units;
    for (std::size_t i = 0; i < known.size(); ++i)
        own->units.user_units.units.add(known[i]);
    const calculator_scope scope(*own);
    work_text line;
    append(line.str, "1 ", from);
    cursor p(line.str->text);
    dim_value dropped;
    if (!compile_input_line(p, dropped, nullptr, err))
        return;
    str_clear(&err); // an expression that has units, but is more than that
    append(err, "ERROR: Syntax error -- Unexpected input continuation '", from, "'.\n");
}

void report_target(std::string_view to, std::string_view problem, text_str*& err) {
    append(err, "ERROR IN REQUESTED OUTPUT: '", to, problem);
}

std::string_view without_outer_blanks(std::string_view text) {
    while (!text.empty() && is_blank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && is_blank(text.back()))
        text.remove_suffix(1);
    return text;
}

// The default system of this name, or null.
const default_system* named_system(std::string_view name) {
    const auto* const found = std::find_if(default_systems.begin(), default_systems.end(),
                                           [name](const default_system& row) { return row.name == name; });
    return found != default_systems.end() ? found : nullptr;
}

// The unit text and the scale of a result. False with a message.
bool read_target(std::string_view to, const dim_value& value, std::string& units, unit_scale& scale,
                 text_str*& err) {
    const std::string_view request = without_outer_blanks(to);
    const default_system* const system = named_system(request);
    if (request.empty() || system != nullptr) {
        work_text rendered;
        if (system != nullptr)
            render_units(system->system, value.dim, rendered.str, err);
        else
            unit_text(rendered.str, value, err);
        cursor p(rendered.str->text);
        parse_unit_expression(p, scale, err);
        units = rendered.view();
        return str_is_empty(err);
    }
    if (!parse_plain_units(request, scale)) {
        report_target(request, "' not recognized.\n", err);
        return false;
    }
    dim_value converted;
    converted.dim = scale.dim;
    if (!same_units_loose(value, converted)) {
        report_target(request, "' is incompatible.\n", err);
        return false;
    }
    units = request;
    return true;
}

bool read_units(std::string_view from, std::string_view to, conversion_plan& plan, text_str*& err) {
    unit_scale source;
    if (!parse_plain_units(from, source) || source.factor == 0.0) {
        report_source(from, err);
        return false;
    }
    dim_value value;
    value.dim = source.dim;
    normalize_dimensions(value);
    unit_scale target;
    std::string units;
    if (!read_target(to, value, units, target, err))
        return false;
    plan.slope = target.factor / source.factor;
    const double shift = target.offset - source.offset * plan.slope;
    plan.intercept = shift == 0.0 ? -0.0 : shift;
    plan.units = std::move(units);
    return true;
}

} // namespace

void conversion_plan::apply(std::span<const double> from, std::span<double> to) const {
    // Blocks of a fixed size, read before they are written, become vector instructions without a check for
    // overlap.
    constexpr std::size_t block_size = 8;
    const double a = slope;
    const double b = intercept;
    const double* in = from.data();
    double* out = to.data();
    std::size_t left = from.size();
    for (; left >= block_size; left -= block_size, in += block_size, out += block_size) {
        std::array<double, block_size> block;
        for (std::size_t i = 0; i < block_size; ++i)
            block[i] = in[i] * a + b;
        for (std::size_t i = 0; i < block_size; ++i)
            out[i] = block[i];
    }
    apply(in, 1, out, 1, left);
}

void conversion_plan::apply(const double* from, std::ptrdiff_t from_step, double* to, std::ptrdiff_t to_step,
                            std::size_t count) const {
    for (; count > 0; --count, from += from_step, to += to_step)
        *to = (*this)(*from);
}

bool make_conversion_plan(std::string_view from, std::string_view to, conversion_plan& plan,
                          std::string& message) {
    work_text err;
    if (read_units(from, to, plan, err.str))
        return true;
    message = err.view();
    return false;
}

} // namespace metrify
