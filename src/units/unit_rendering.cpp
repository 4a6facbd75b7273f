#include "units/unit_rendering.h"

#include "base/failure.h"
#include "base/number_text.h"
#include "units/default_system.h"
#include "units/unit_expression.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace metrify {

namespace {

// The exponents in the order of the system's units. If the first one is a force, a unit of mass is
// lbf s^2 / ft, so length and time are corrected by the mass.
std::array<double, slot_count> slot_exponents(const default_system& system, const exponents& dim) {
    const double mass = system.is_force_based ? dim[dim_mass] : 0.0;
    return {dim[dim_mass],
            dim[dim_length] - mass,
            dim[dim_angle],
            dim[dim_time] + 2 * mass,
            dim[dim_temperature],
            dim[dim_amount],
            dim[dim_temperature_difference],
            dim[dim_charge]};
}

bool is_whole_number(double x) {
    return x >= std::numeric_limits<std::int32_t>::min() && x <= std::numeric_limits<std::int32_t>::max() &&
           std::trunc(x) == x;
}

// ` = 3 m`, or ` = [ 1 , 2 , 3 ] m`
void append_value(text_str*& out, const dim_value& value, std::string_view units) {
    number_buffer x;
    const std::string_view first = format_double(value.comp[0], x);
    if (value.kind == 0) {
        append(out, " = ", first, " ", units);
        return;
    }
    number_buffer y;
    number_buffer z;
    append(out, " = [ ", first, " , ", format_double(value.comp[1], y), " , ",
           format_double(value.comp[2], z), " ] ", units);
}

} // namespace

bool append_one_exponentiated_unit_to_a_string(std::string_view name, double exponent, text_str*& buffer) {
    constexpr std::size_t longest = 256;
    const double magnitude = std::fabs(exponent);
    number_buffer digits;
    std::string_view power;
    if (magnitude != 1.0) {
        // A whole number is written with all its digits, up to what 32 bits hold.
        power = is_whole_number(exponent) && magnitude <= std::numeric_limits<std::int32_t>::max()
                    ? format_int(static_cast<int>(magnitude), digits)
                    : format_double(magnitude, digits);
    }
    if (name.size() + (power.empty() ? 0 : 1 + power.size()) + 1 > longest)
        return false;
    append(buffer, name);
    if (!power.empty()) {
        append(buffer, "^");
        append(buffer, power);
    }
    append(buffer, " ");
    return true;
}

void render_units(unit_system system, const exponents& dim, text_str*& out, text_str*& err) {
    const slot_names& names = default_systems[system].units;
    const std::array<double, slot_count> slots = slot_exponents(default_systems[system], dim);
    work_text rendered;
    const auto write_slots = [&](auto is_wanted, std::string_view failure) {
        for (std::size_t i = 0; i < slot_count; ++i)
            if (is_wanted(slots[i]) &&
                !append_one_exponentiated_unit_to_a_string(names[i], slots[i], rendered.str))
                append(err, failure);
    };
    const auto is_positive = [](double x) { return x > 0.0; };
    const auto is_negative = [](double x) { return x < 0.0; };
    write_slots(is_positive, "append_one_exponentiated_unit_to_a_string Error 2: Exponent too large.");
    if (std::any_of(slots.begin(), slots.end(), is_negative)) {
        rendered.append("/ ");
        write_slots(is_negative, "append_one_exponentiated_unit_to_a_string Error 3: Exponent too large.");
    }
    std::string_view text = rendered.view();
    if (!text.empty())
        text.remove_suffix(1);
    append(out, text);
}

void unit_text(text_str*& out, const dim_value& value, text_str*& err) {
    if (const std::string* exception = matching_exception(value.dim))
        append(out, *exception);
    else
        render_units(current_unit_system(), value.dim, out, err);
}

void unit_text_for_message(text_str*& out, const dim_value& value, text_str*& err) {
    if (value.dim == exponents{} && matching_exception(value.dim) == nullptr)
        append(out, "Dimensionless");
    else
        unit_text(out, value, err);
}

void print_value_in_default_units(text_str*& out, const dim_value& value, text_str*& err, bool no_check) {
    work_text units;
    unit_text(units.str, value, err);
    cursor p(units.str->text);
    print_value_with_requested_units(out, value, p, err, no_check);
}

void print_value_in_system(unit_system system, text_str*& out, const dim_value& value, text_str*& err,
                           bool no_check) {
    work_text units;
    render_units(system, value.dim, units.str, err);
    cursor p(units.str->text);
    print_value_with_requested_units(out, value, p, err, no_check);
}

bool print_value_with_requested_units(text_str*& out, const dim_value& value, cursor& expptr, text_str*& err,
                                      bool no_check) {
    constexpr std::string_view failure = "ERROR IN REQUESTED OUTPUT: '";
    const cursor entry = expptr;
    skip_blanks_and_comments(expptr);
    const cursor start = expptr;
    str_clear(&err);
    unit_scale scale;
    if (!parse_unit_expression(expptr, scale, err)) {
        skip_to_statement_end(expptr);
        // The request's own message replaces that of its units.
        replace_message(err, failure, text_span(start, expptr), "' not recognized.\n");
        return false;
    }
    const char* end = std::find(entry.at, expptr.at, '#');
    const auto text_from = [end](const cursor& from) {
        return std::string_view(from.at, static_cast<std::size_t>(std::max(end, from.at) - from.at));
    };
    dim_value converted;
    convert_non_affine_FromMKS_vec_full(value, converted, scale);
    if (!str_is_empty(err)) {
        append(out, err);
        str_clear(&err);
    }
    if (!no_check && !same_units_loose(value, converted)) {
        append(err, failure, text_from(start), "' is incompatible.\n");
        return false;
    }
    append_value(out, converted, text_from(entry));
    return true;
}

} // namespace metrify
