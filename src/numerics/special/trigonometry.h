#pragma once

// Sine, cosine and tangent with the same results on every platform for large angles and near the multiples of
// pi/2. Some runtime libraries reduce the argument with too few digits of pi, so that a small remainder is
// wrong.

namespace metrify {

/// The sine of x radians, to about one unit in the last place; a not-a-number for an infinity.
double sine(double x);
/// Likewise the cosine.
double cosine(double x);
/// Likewise the tangent, to about two units.
double tangent(double x);

} // namespace metrify
