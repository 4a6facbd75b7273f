#include "machine/operators.h"

#include "units/scalar_arithmetic.h"
#include "units/unit_rendering.h"

#include <span>

namespace metrify {

namespace {

void append_units(text_str*& err, const dim_value& value) {
    work_text units;
    unit_text_for_message(units.str, value, err);
    append(err, units.str);
}

struct additive_messages {
    std::string_view overflow, units, size;
};

// Both additive operators. The result has the exponents of the left operand, the lower one on the stack.
template <class Operation>
void combine_terms(compile_ctx& ctx, text_str*& err, const additive_messages& messages) {
    str_clear(&err);
    ctx.stack.require(2);
    dim_value& right = ctx.stack.top(0).value;
    dim_value& left = ctx.stack.top(1).value;
    if (Operation::overflows(left.comp[0], right.comp[0])) {
        append(err, messages.overflow);
        left = overflow_value();
    } else if (!units_agree_or_zero(left, right) && left.kind == right.kind &&
               !same_units_without_angle(left, right)) {
        append(err, messages.units);
        append_units(err, left);
        append(err, "' AND '");
        append_units(err, right);
        append(err, "'.\n");
        dim_clear(left);
    } else if (left.kind != right.kind) {
        append(err, messages.size);
        dim_clear(left);
    } else {
        for (std::size_t i = 0; i < left.comp.size(); ++i)
            left.comp[i] = Operation::result(left.comp[i], right.comp[i]);
    }
    ctx.stack.drop();
}

} // namespace

void stck_add(compile_ctx& ctx, text_str*& err) {
    combine_terms<addition>(ctx, err,
                            {"ERROR:  Numerical over or underflow while adding.\n",
                             "ERROR:  Adding incompatible units: '",
                             "ERROR:  Adding different size vectors.\n"});
}

void stck_subtract(compile_ctx& ctx, text_str*& err) {
    combine_terms<subtraction>(ctx, err,
                               {"ERROR: Numerical over or underflow while subtracting.\n",
                                "ERROR: Subtracting incompatible units: '",
                                "ERROR:  Subtracting different size vectors.\n"});
}

void stck_multiply(compile_ctx& ctx, text_str*& err) {
    str_clear(&err);
    ctx.stack.require(2);
    const dim_value& right = ctx.stack.top(0).value;
    dim_value& left = ctx.stack.top(1).value;
    if (left.kind != 0 && right.kind != 0) {
        append(err, "ERROR:  Multiplying vectors -- not defined.\n");
        dim_clear(left);
    } else if (multiplication::overflows(left.comp[0], right.comp[0])) {
        append(err, "ERROR: Numerical over or underflow while multiplying.\n");
        left = overflow_value();
    } else {
        const double scalar = left.kind != 0 ? right.comp[0] : left.comp[0];
        const dim_value& many = left.kind != 0 ? left : right;
        const std::size_t components = many.kind != 0 ? 3 : 1;
        std::array<double, 3> product = {};
        for (std::size_t i = 0; i < components; ++i)
            product[i] = multiplication::result(many.comp[i], scalar);
        left.kind = many.kind;
        left.comp = product;
        left.dim += right.dim;
        normalize_dimensions(left);
    }
    ctx.stack.drop();
}

void stck_divide(compile_ctx& ctx, text_str*& err) {
    str_clear(&err);
    ctx.stack.require(2);
    const dim_value& right = ctx.stack.top(0).value;
    dim_value& left = ctx.stack.top(1).value;
    if (right.kind != 0) {
        append(err, "ERROR:  Dividing by a vector -- not defined.\n");
        dim_clear(left);
    } else if (division::overflows(left.comp[0], right.comp[0])) {
        append(err, "ERROR: Numerical over or underflow while dividing.\n");
        left = overflow_value();
    } else {
        for (double& component : left.comp)
            component = division::result(component, right.comp[0]);
        left.dim -= right.dim;
        normalize_dimensions(left);
    }
    ctx.stack.drop();
}

void stck_exponentiate(compile_ctx& ctx, text_str*& err) {
    str_clear(&err);
    ctx.stack.require(2);
    const dim_value& exponent = ctx.stack.top(0).value;
    dim_value& base = ctx.stack.top(1).value;
    const double p = exponent.comp[0];
    const double b = base.comp[0];
    if (base.kind != 0) {
        append(err, "ERROR:  Exponentiating a vector -- not defined.\n");
        dim_clear(base);
    } else if (is_zero_to_zero(b, p)) {
        dim_clear(base);
    } else if (exponentiation::overflows(b, p)) {
        append(err, "ERROR: Numerical over or underflow while exponentiating.\n");
        base = overflow_value();
    } else if (!is_dimensionless(exponent)) {
        append(err, "ERROR: Dimensional exponent: ");
        append(err, p);
        append(err, " ");
        append_units(err, exponent);
        append(err, ".\n");
        dim_clear(base);
    } else {
        const dim_value raised = base;
        dim_pow(base, raised, p);
    }
    ctx.stack.drop();
}

void stck_negate(compile_ctx& ctx, text_str*& err) {
    str_clear(&err);
    ctx.stack.require(1);
    dim_value& value = ctx.stack.top().value;
    if (is_overflowed(value.comp[0])) {
        append(err, "ERROR: Numerical over or underflow while negating.\n");
        value = overflow_value();
        return;
    }
    for (double& component : value.comp)
        component = -component;
}

void stck_unit_assignment(compile_ctx& ctx, text_str*& err) {
    str_clear(&err);
    unit_scale scale;
    pop_unit_scale(scale, ctx);
    ctx.stack.require(1);
    dim_value& value = ctx.stack.top().value;
    if (!is_dimensionless(value)) {
        append(err, "ERROR: Units assignment requires dimensionless value before it.\n");
        value = overflow_value();
    } else if (is_overflowed(value.comp[0]) || is_overflowed(scale.offset) || is_overflowed(scale.factor)) {
        append(err, "ERROR: Numerical over or underflow while unit_assignment.\n");
        value = overflow_value();
    } else {
        convert_non_affine_ToMKS_vec_full(value, value, scale, err);
    }
}

void stck_request_units(compile_ctx& ctx, text_str*& err) {
    str_clear(&err);
    unit_scale scale;
    pop_unit_scale(scale, ctx);
    ctx.stack.require(1);
    dim_value& value = ctx.stack.top().value;
    dim_value converted;
    convert_non_affine_FromMKS_vec_full(value, converted, scale);
    if (same_units_loose(value, converted))
        converted.dim = {};
    else
        append(err, "ERROR: Requested units incompatible.\n");
    value = converted;
}

void stck_make_vector(compile_ctx& ctx, int count, text_str*& err) {
    str_clear(&err);
    std::array<dim_value, 3> parts;
    for (int i = count; i-- > 0;)
        pop_value(parts[static_cast<std::size_t>(i)], ctx);
    const std::span<dim_value> given(parts.data(), static_cast<std::size_t>(count));

    // First with second, first with third, second with third: a zero adopts the others' units.
    bool same_units = true;
    for (std::size_t i = 0; i < given.size(); ++i)
        for (std::size_t j = i + 1; j < given.size(); ++j)
            same_units = same_units && units_agree_or_zero(given[i], given[j]);
    bool scalars = true;
    for (const dim_value& part : given)
        scalars = scalars && part.kind == 0;

    dim_value vector;
    if (!same_units)
        append(err, "ERROR:  All vector components must have same units.\n");
    else if (!scalars)
        append(err, "ERROR:  All vector components must be scalars.\n");
    else
        vector = {1, {parts[0].comp[0], parts[1].comp[0], parts[2].comp[0]}, parts[0].dim};
    push_value(vector, ctx);
}

void normalize_dimensions(dim_value& value) {
    exponents& dim = value.dim;
    if (dim[dim_temperature_difference] != 0.0) {
        exponents others = dim;
        others[dim_temperature_difference] = 0.0;
        if (others != exponents{}) {
            dim[dim_temperature] += dim[dim_temperature_difference];
            dim[dim_temperature_difference] = 0.0;
        }
    }
    if (dim[dim_length] != 0.0)
        dim[dim_angle] = 0.0;
}

} // namespace metrify
