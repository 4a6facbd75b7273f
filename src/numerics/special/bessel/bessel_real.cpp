#include "numerics/special/bessel/bessel_real.h"

#include "numerics/special/trigonometry.h"

#include <cmath>
#include <numbers>

namespace metrify {

namespace {

struct both_kinds {
    double first, second;
};

both_kinds j_and_y(double nu, double x, text_str*& err) {
    both_kinds f = {};
    double j_prime = 0.0;
    double y_prime = 0.0;
    math_func_bessjy(x, nu, f.first, f.second, j_prime, y_prime, err);
    return f;
}

both_kinds i_and_k(double nu, double x, text_str*& err) {
    both_kinds f = {};
    double i_prime = 0.0;
    double k_prime = 0.0;
    math_func_bessik(x, nu, f.first, f.second, i_prime, k_prime, err);
    return f;
}

} // namespace

double math_func_bessj_frac(double nu, double x, text_str*& err) {
    const double order = std::fabs(nu);
    const auto [j, y] = j_and_y(order, x, err);
    const double angle = order * std::numbers::pi;
    return nu < 0.0 ? cosine(angle) * j - sine(angle) * y : j;
}

double math_func_bessy_frac(double nu, double x, text_str*& err) {
    const double order = std::fabs(nu);
    const auto [j, y] = j_and_y(order, x, err);
    const double angle = order * std::numbers::pi;
    return nu < 0.0 ? sine(angle) * j + cosine(angle) * y : y;
}

double math_func_bessi_frac(double nu, double x, text_str*& err) {
    constexpr double two_over_pi = 2.0 / std::numbers::pi;
    const double order = std::fabs(nu);
    const auto [i, k] = i_and_k(order, x, err);
    return nu < 0.0 ? i + two_over_pi * sine(order * std::numbers::pi) * k : i;
}

} // namespace metrify
