#pragma once

// Carlson's elliptic integrals.
//
// Source: B. C. Carlson, Numer. Math. 33 (1979), by the duplication theorem; Press et al., Numerical Recipes,
// 6.11, with two intentional differences. The leading term of RC's series is 12, so RC is near twelve times
// the integral, and RJ uses these values; and RC of y < 0 is a not-a-number, and so is RJ of p < 0.
//
// Accuracy: 1e-14 relative for RF and RD; for RC and RJ relative to the values so defined.
//
// Domain: as the tests below leave it. Intentional: RJ tests y + z, z and p only. With x = 0 and y or z = 0
// it iterates until underflow, and each iteration may append a text of RC.
//
// Error texts, with the result 0, in the order of the tests:
//   "ERROR:  x must be >= 0 in routine math_func_carlsons_rc().\n"
//   "ERROR:  y cannot be zero in routine math_func_carlsons_rc().\n"
//   "ERROR:  x + fabs(y) too small in routine math_func_carlsons_rc().\n"        below 1.69e-38
//   "ERROR:  x + fabs(y) too big in routine math_func_carlsons_rc().\n"          above 3e37
//   "ERROR:  bad arg range in routine math_func_carlsons_rc().\n"  y < -1.72e19 and 0 < x < 0.01028196
//   "ERROR:  x or y must be >= 0 in routine math_func_carlsons_rd().\n"
//   "ERROR:  x + y or z too small in routine math_func_carlsons_rd().\n"         below 1e-25
//   "ERROR:  x, y, z too big in routine math_func_carlsons_rd().\n"              above 4.5e21
//   "ERROR:  x, y, and z  >= 0 in routine math_func_carlsons_rf().\n"
//   "ERROR:  x or y or z too small in routine math_func_carlsons_rf().\n"        sums below 1.5e-38
//   "ERROR:  x or y or z too big in routine math_func_carlsons_rf().\n"          above 3e37
//   "ERROR:  x, y, and z must be >= 0 in routine math_func_carlsons_rj().\n"
//   "ERROR:  arg error in routine math_func_carlsons_rj().\n"  y + z or |p| below 2.5e-13, z or |p| above
//   9e11

#include "base/text_str.h"

namespace metrify {

double math_func_carlsons_rc(double x, double y, text_str*& err);
double math_func_carlsons_rd(double x, double y, double z, text_str*& err);
double math_func_carlsons_rf(double x, double y, double z, text_str*& err);
double math_func_carlsons_rj(double x, double y, double z, double p, text_str*& err);

} // namespace metrify
