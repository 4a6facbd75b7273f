#pragma once

// The arithmetic on the numbers of scalars whose units are settled ahead.

#include "units/dim_value.h"

#include <cmath>

namespace metrify {

/// What a scalar's components hold. Those that it doesn't use take part in its arithmetic; they are alike.
struct number {
    double value, rest;
};

inline bool is_overflowed(const number& x) {
    return x.value == infinity_sentinel;
}
inline bool is_either_overflowed(const number& left, const number& right) {
    return is_overflowed(left) || is_overflowed(right);
}
/// False for a not-a-number too.
inline bool is_finite(double x) {
    return std::fabs(x) < infinity_sentinel;
}

// Each operator puts its result in the place of its left operand. False where the full operator has a message
// to give. An operand that calls for one shows in the result, so that is looked at first.

inline bool add(number& left, const number& right) {
    const double sum = left.value + right.value;
    if (!is_finite(sum) && is_either_overflowed(left, right))
        return false;
    left = {sum, left.rest + right.rest};
    return true;
}

inline bool subtract(number& left, const number& right) {
    const double difference = left.value - right.value;
    if (!is_finite(difference) && is_either_overflowed(left, right))
        return false;
    left = {difference, left.rest - right.rest};
    return true;
}

inline bool multiply(number& left, const number& right) {
    const double product = left.value * right.value;
    if (!is_finite(product) && is_either_overflowed(left, right))
        return false;
    left = {product, 0.0};
    return true;
}

inline bool divide(number& left, const number& right) {
    const double quotient = left.value / right.value;
    const bool is_usual = is_finite(quotient) && quotient != 0.0;
    if (!is_usual && (is_either_overflowed(left, right) || right.value == 0.0))
        return false;
    left = {quotient, left.rest / right.value};
    return true;
}

inline bool raise(number& base, const number& exponent) {
    const double b = base.value;
    const double p = exponent.value;
    if (is_overflowed(base) || !is_finite(p) || (b < 0.0 && std::floor(p) != p))
        return false;
    base = {b == 0.0 && p == 0.0 ? 0.0 : std::pow(b, p), 0.0};
    return true;
}

inline bool negate(number& of) {
    if (is_overflowed(of))
        return false;
    of = {-of.value, -of.rest};
    return true;
}

/// From a unit to the base system; the scale is an offset and behind it a factor.
inline bool assign_scale(number& of, const number& scale) {
    if (is_overflowed(of))
        return false;
    of = {(of.value - scale.value) / scale.rest, (of.rest - scale.value) / scale.rest};
    return true;
}

} // namespace metrify
