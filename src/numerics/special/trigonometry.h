#pragma once

// Sine, cosine and tangent that are the same on every platform near the multiples of a quarter turn. Some
// runtimes take the multiples off with a pi that is too short there, and the small rest is wrong by then.

namespace metrify {

/// The sine of x radians, to about one unit in the last place up to some 800,000; beyond, what the runtime
/// gives.
double sine(double x);
/// Likewise the cosine.
double cosine(double x);
/// Likewise the tangent, to about two units.
double tangent(double x);

} // namespace metrify
