#pragma once

// The Bessel functions of order 0 and 1, ordinary and modified, as rational and polynomial fits.
//
// Source: the fits of E. E. Allen, Math. Tables Aids Comp. 8 (1954) and 10 (1956), also in Abramowitz and
// Stegun, Handbook of Mathematical Functions, 9.8, for I and K; those of J. F. Hart et al., Computer
// Approximations (1968), for J and Y; both in the form of Press et al., Numerical Recipes, 6.5 and 6.6.
//
// Accuracy: 6e-8 for J and Y (near a zero relative to the amplitude), 6e-7 for I and 2e-7
// for K, relative. J(0, 0) is the ratio of two constants, 1.0000000028. The phase of a large x is a
// rounded number: from about 1e8 on J and Y lose digits.
//
// Domain: every x for J and I; x > 0 for Y and K, which don't test it and otherwise return an infinity or a
// not-a-number. There are no failures and no texts.

namespace metrify {

double math_func_bessj0(double x);
double math_func_bessj1(double x);
double math_func_bessy0(double x);
double math_func_bessy1(double x);
double math_func_bessi0(double x);
double math_func_bessi1(double x);
double math_func_bessk0(double x);
double math_func_bessk1(double x);

} // namespace metrify
