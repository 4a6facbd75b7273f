#pragma once

// Sine, cosine and tangent with the same results on every platform near the multiples of pi/2. Some runtime
// libraries reduce the argument with too few digits of pi, so that the small remainder is wrong.

namespace metrify {

/// The sine of x radians, to about one unit in the last place up to some 800,000; beyond, the runtime
/// library's.
double sine(double x);
/// Likewise the cosine.
double cosine(double x);
/// Likewise the tangent, to about two units.
double tangent(double x);

} // namespace metrify
