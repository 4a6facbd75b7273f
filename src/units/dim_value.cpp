#include "units/dim_value.h"

#include "units/scalar_arithmetic.h"

#include <cmath>

namespace metrify {

namespace {

constexpr double exponent_tolerance = 1e-5;

bool exponents_differ(double x, double y) {
    return std::fabs(x - y) > exponent_tolerance;
}

// A zero without units adopts the kind and the units of the other operand, so that 0 + 5 m works.
void adopt_units(dim_value& zero, const dim_value& other) {
    zero.kind = other.kind;
    zero.comp = {};
    zero.dim = other.dim;
}

// Whether all components but the given one are 0. A not-a-number is not 0.
bool other_components_zero(const dim_value& v, int component) {
    switch (component) {
    case 1:
        return v.comp[1] == 0.0 && v.comp[2] == 0.0;
    case 2:
        return v.comp[0] == 0.0 && v.comp[2] == 0.0;
    case 3:
        return v.comp[0] == 0.0 && v.comp[1] == 0.0;
    default:
        return true;
    }
}

} // namespace

dim_value overflow_value() {
    dim_value v;
    v.comp[0] = infinity_sentinel;
    return v;
}

bool same_units_strict(const exponents& a, const exponents& b) {
    for (std::size_t i = 0; i < a.size(); ++i)
        if (exponents_differ(a[i], b[i]))
            return false;
    return true;
}

bool same_units_loose(const dim_value& a, const dim_value& b) {
    const exponents& x = a.dim;
    const exponents& y = b.dim;
    return !exponents_differ(x[dim_time], y[dim_time]) && !exponents_differ(x[dim_mass], y[dim_mass]) &&
           !exponents_differ(x[dim_length], y[dim_length]) &&
           !exponents_differ(x[dim_charge], y[dim_charge]) &&
           !exponents_differ(x[dim_temperature] + x[dim_temperature_difference],
                             y[dim_temperature] + y[dim_temperature_difference]);
}

bool same_units_without_angle(dim_value& a, dim_value& b) {
    dim_value x = a;
    dim_value y = b;
    x.dim[dim_angle] = y.dim[dim_angle] = 0.0;
    if (!same_units_strict(x, y))
        return false;
    a.dim = x.dim;
    b.dim = y.dim;
    return true;
}

bool units_agree_or_zero(dim_value& a, dim_value& b) {
    const bool agree = same_units_loose(a, b);
    if (agree && a.kind == b.kind)
        return true;
    if (is_pure_zero(a)) {
        adopt_units(a, b);
        return true;
    }
    if (is_pure_zero(b)) {
        adopt_units(b, a);
        return true;
    }
    return agree;
}

bool component_units_agree(const dim_value& a, int component_a, const dim_value& b, int component_b) {
    return same_units_loose(a, b) ||
           (other_components_zero(a, component_a) && other_components_zero(b, component_b));
}

bool is_dimensionless(const dim_value& v) {
    return v.dim[dim_time] == 0.0 && v.dim[dim_mass] == 0.0 && v.dim[dim_length] == 0.0 &&
           v.dim[dim_temperature] == 0.0 && v.dim[dim_temperature_difference] == 0.0 &&
           v.dim[dim_charge] == 0.0;
}

bool is_plain_radian(const dim_value& v) {
    return v.dim == exponents{1.0};
}

bool is_pure_zero(const dim_value& v) {
    return v.comp == std::array<double, 3>{} && v.dim == exponents{};
}

void dim_pow(dim_value& result, const dim_value& base, double p) {
    const double b = base.comp[0];
    dim_clear(result);
    result.kind = base.kind;
    if (is_zero_to_zero(b, p))
        return;
    if (has_no_power(b, p)) {
        result = overflow_value();
        if (base.kind != 0)
            result.comp.fill(infinity_sentinel);
        return;
    }
    const std::size_t components = base.kind != 0 ? 3 : 1;
    for (std::size_t i = 0; i < components; ++i)
        result.comp[i] = std::pow(base.comp[i], p);
    result.dim = base.dim;
    result.dim *= p;
}

void convert_non_affine_FromMKS_vec_full(const dim_value& in, dim_value& out, const unit_scale& scale) {
    const std::array<double, 3> comp = in.comp;
    out.kind = in.kind;
    for (std::size_t i = 0; i < comp.size(); ++i)
        out.comp[i] = comp[i] * scale.factor + scale.offset;
    out.dim = scale.dim;
}

void convert_non_affine_ToMKS_vec_full(const dim_value& in, dim_value& out, const unit_scale& scale,
                                       text_str*& err) {
    if (scale.factor == 0.0) {
        dim_clear(out);
        append(err, "ERROR: w0 divide by zero in convert_non_affine_ToMKS_vec_full.\n");
        return;
    }
    const std::array<double, 3> comp = in.comp;
    out.kind = in.kind;
    for (std::size_t i = 0; i < comp.size(); ++i)
        out.comp[i] = to_base_system(comp[i], scale.offset, scale.factor);
    out.dim = scale.dim;
}

dim_value pack_three_ints(std::int32_t a, std::int32_t b, std::int32_t c) {
    dim_value v;
    v.dim[dim_charge] = a;
    v.dim[dim_temperature] = b;
    v.dim[dim_amount] = c;
    return v;
}

dim_value pack_two_ints(std::int32_t a, std::int32_t b) {
    dim_value v;
    v.dim[dim_charge] = a;
    v.dim[dim_temperature_difference] = b;
    return v;
}

packed_call unpack_three_ints(const dim_value& v) {
    return {static_cast<std::int32_t>(v.dim[dim_charge]), static_cast<std::int32_t>(v.dim[dim_temperature]),
            static_cast<std::int32_t>(v.dim[dim_amount])};
}

packed_reference unpack_two_ints(const dim_value& v) {
    return {static_cast<std::int32_t>(v.dim[dim_charge]),
            static_cast<std::int32_t>(v.dim[dim_temperature_difference])};
}

} // namespace metrify
