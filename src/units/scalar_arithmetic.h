#pragma once

// The arithmetic of plain numbers: what each operator computes and for which operands it overflows. The
// operators on quantities and the replay of plain numbers both use it.

#include "units/dim_value.h"

#include <cmath>

namespace metrify {

inline bool is_overflowed(double x) {
    return x == infinity_sentinel;
}
inline bool is_either_overflowed(double left, double right) {
    return is_overflowed(left) || is_overflowed(right);
}

struct addition {
    static bool overflows(double left, double right) { return is_either_overflowed(left, right); }
    static double result(double left, double right) { return left + right; }
};

struct subtraction {
    static bool overflows(double left, double right) { return is_either_overflowed(left, right); }
    static double result(double left, double right) { return left - right; }
};

struct multiplication {
    static bool overflows(double left, double right) { return is_either_overflowed(left, right); }
    static double result(double left, double right) { return left * right; }
};

struct division {
    static bool overflows(double left, double right) {
        return is_either_overflowed(left, right) || right == 0.0;
    }
    static double result(double left, double right) { return left / right; }
};

/// 0 to the power 0 is 0, and without units.
inline bool is_zero_to_zero(double base, double exponent) {
    return base == 0.0 && exponent == 0.0;
}
/// True for an overflowed base, and for a negative base with an exponent that is not whole.
inline bool has_no_power(double base, double exponent) {
    return is_overflowed(base) || (base < 0.0 && std::floor(exponent) != exponent);
}

struct exponentiation {
    static bool overflows(double base, double exponent) {
        return has_no_power(base, exponent) || is_overflowed(exponent);
    }
    static double result(double base, double exponent) {
        return is_zero_to_zero(base, exponent) ? 0.0 : std::pow(base, exponent);
    }
};

/// From a unit to the base system.
inline double to_base_system(double x, double offset, double factor) {
    return (x - offset) / factor;
}

} // namespace metrify
