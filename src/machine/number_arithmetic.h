#pragma once

// The operators on the plain numbers of scalars whose units have been checked before.

#include "units/scalar_arithmetic.h"

namespace metrify {

/// The components of a scalar. The unused ones are equal to each other and take part in the arithmetic, so
/// that the result is the full operator's in all components.
struct number {
    double value, rest;
};

/// False for a not-a-number too.
inline bool is_finite(double x) {
    return std::fabs(x) < infinity_sentinel;
}

// Each operator stores its result in its left operand, or returns false if the full operator reports a
// message.

/// An operand that overflows makes the result infinite, not-a-number or 0, so the result is checked first.
template <class Operation>
bool apply(number& left, number right, double rest) {
    const double result = Operation::result(left.value, right.value);
    const bool is_usual = is_finite(result) && result != 0.0;
    if (!is_usual && Operation::overflows(left.value, right.value))
        return false;
    left = {result, rest};
    return true;
}

inline bool add(number& left, number right) {
    return apply<addition>(left, right, addition::result(left.rest, right.rest));
}

inline bool subtract(number& left, number right) {
    return apply<subtraction>(left, right, subtraction::result(left.rest, right.rest));
}

inline bool multiply(number& left, number right) {
    return apply<multiplication>(left, right, 0.0);
}

inline bool divide(number& left, number right) {
    return apply<division>(left, right, division::result(left.rest, right.value));
}

inline bool raise(number& base, number exponent) {
    if (exponentiation::overflows(base.value, exponent.value) || !is_finite(exponent.value))
        return false;
    base = {exponentiation::result(base.value, exponent.value), 0.0};
    return true;
}

/// A unary operator: the second parameter is ignored.
inline bool negate(number& of, number = {}) {
    if (is_overflowed(of.value))
        return false;
    of = {-of.value, -of.rest};
    return true;
}

/// From a unit to the base system. The scale is an offset followed by a factor.
inline bool assign_scale(number& of, number scale) {
    if (is_overflowed(of.value))
        return false;
    of = {to_base_system(of.value, scale.value, scale.rest),
          to_base_system(of.rest, scale.value, scale.rest)};
    return true;
}

} // namespace metrify
