#pragma once

// The calculator's quantity, its comparison rules and the affine conversion between the base system and a
// unit expression. Values are always held in the base system: rad, s, kg, m, degK, mol, degKdiff, C.

#include "base/text_str.h"

#include <array>
#include <bit>
#include <cstdint>
#include <limits>

namespace metrify {

/// Indices of the exponents in `dim`.
enum base_dimension : std::size_t {
    dim_angle = 0, // ignored by is_dimensionless and same_units_loose
    dim_time = 1,
    dim_mass = 2,
    dim_length = 3,
    dim_temperature = 4,            // absolute; same_units_loose adds the difference
    dim_amount = 5,                 // ignored like the angle
    dim_temperature_difference = 6, // a separate dimension
    dim_charge = 7,                 // a current is charge per time
};

/// The exponents of the base units. A product of units adds them, a quotient subtracts them, a power
/// multiplies them.
struct exponents {
    std::array<double, 8> powers = {};

    constexpr double& operator[](std::size_t i) { return powers[i]; }
    constexpr const double& operator[](std::size_t i) const { return powers[i]; }
    static constexpr std::size_t size() { return 8; }
    constexpr double* begin() { return powers.data(); }
    constexpr double* end() { return powers.data() + size(); }
    constexpr const double* begin() const { return powers.data(); }
    constexpr const double* end() const { return powers.data() + size(); }

    friend constexpr bool operator==(const exponents&, const exponents&) = default;

    constexpr exponents& operator+=(const exponents& other) {
        for (std::size_t i = 0; i < size(); ++i)
            powers[i] += other.powers[i];
        return *this;
    }
    constexpr exponents& operator-=(const exponents& other) {
        for (std::size_t i = 0; i < size(); ++i)
            powers[i] -= other.powers[i];
        return *this;
    }
    constexpr exponents& operator*=(double power) {
        for (double& exponent : powers)
            exponent *= power;
        return *this;
    }
};

/// A scalar or a vector of three components with its exponents.
struct dim_value {
    std::int32_t kind = 0; // 0 for a scalar, which uses comp[0] alone; anything else for a vector
    std::array<double, 3> comp = {};
    exponents dim = {};
};

/// The value of a unit expression: x in its unit and y in the base system satisfy x = y*factor + offset.
struct unit_scale {
    std::int32_t kind = 0;
    double offset = 0.0; // only a lone degC or degF has one
    double factor = 0.0;
    std::array<double, 2> spare = {};
    exponents dim = {};
};

/// In comp[0] it marks a value that has overflowed or is undefined. Tests use plain equality.
constexpr double infinity_sentinel = std::numeric_limits<double>::infinity();

/// Sets v to a dimensionless scalar zero.
inline void dim_clear(dim_value& v) {
    // Member by member: for the whole record compilers use a string instruction, which is slow to start.
    v.kind = 0;
    v.comp = {};
    v.dim = {};
}
inline void dim_copy(const dim_value& src, dim_value& dst) {
    dst = src;
}
/// The value of a failed operation: a cleared value with the sentinel in comp[0].
dim_value overflow_value();

// Comparison of exponents. Intentional: the functions same_units_... tolerate differences up to 1e-5 per
// exponent, the functions is_... compare exactly.

/// True if all eight exponents agree.
bool same_units_strict(const exponents& a, const exponents& b);
inline bool same_units_strict(const dim_value& a, const dim_value& b) {
    return same_units_strict(a.dim, b.dim);
}

/// True if time, mass, length and charge agree, and the sum of the two temperature exponents; angle and
/// amount of substance are ignored.
bool same_units_loose(const dim_value& a, const dim_value& b);

/// If all exponents but angle agree, sets the angle of both to 0 and returns true; otherwise changes nothing.
bool same_units_without_angle(dim_value& a, dim_value& b);

/// True if same_units_loose holds and the kinds agree. Otherwise an operand that is a pure zero (first a,
/// then b) adopts the other's kind and exponents. Also true if same_units_loose holds and the kinds differ.
bool units_agree_or_zero(dim_value& a, dim_value& b);

/// The test for an assignment to one component: true if same_units_loose holds, or if for each value with a
/// component number (1 to 3) the other two components are exactly 0.
bool component_units_agree(const dim_value& a, int component_a, const dim_value& b, int component_b);

/// True if time, mass, length, both temperatures and charge are exactly 0; a value in radians or moles
/// is dimensionless.
bool is_dimensionless(const dim_value& v);
bool is_plain_radian(const dim_value& v);
/// True for a scalar with all exponents 0 whose two unused components are equal, as they usually are.
inline bool is_plain_number(const dim_value& v) {
    const auto bits = [](double x) { return std::bit_cast<std::uint64_t>(x); };
    std::uint64_t set = 0;
    for (const double exponent : v.dim)
        set |= bits(exponent) << 1U; // 0 for both zeros
    return (set | (bits(v.comp[1]) ^ bits(v.comp[2]))) == 0 && v.kind == 0;
}
/// True if all components and exponents are exactly 0, whatever the kind.
bool is_pure_zero(const dim_value& v);

/// Raises to the power p, component by component. 0 to the power 0 is 0. The sentinel as base, or a negative
/// base with a power that is not whole, results in the overflow value.
void dim_pow(dim_value& result, const dim_value& base, double p);

/// From the base system into a unit expression. The exponents become those of the scale.
void convert_non_affine_FromMKS_vec_full(const dim_value& in, dim_value& out, const unit_scale& scale);

/// From a unit expression to the base system. A scale whose factor is 0 is a failure.
void convert_non_affine_ToMKS_vec_full(const dim_value& in, dim_value& out, const unit_scale& scale,
                                       text_str*& err);

// Small integers stored in the exponents of a value that is not a quantity: the record of a call, or a
// reference to a variable.

struct packed_call {
    std::int32_t function, call_class, count;
};
struct packed_reference {
    std::int32_t number, component;
};
dim_value pack_three_ints(std::int32_t a, std::int32_t b, std::int32_t c);
dim_value pack_two_ints(std::int32_t a, std::int32_t b);
packed_call unpack_three_ints(const dim_value& v);
packed_reference unpack_two_ints(const dim_value& v);

} // namespace metrify
