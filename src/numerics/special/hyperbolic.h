#pragma once

// Hyperbolic functions with the same results on every platform. The runtime libraries compute them with
// registers of different widths, so that their last digits differ.

namespace metrify {

/// The hyperbolic sine of x, to about two units in the last place.
double hyperbolic_sine(double x);
/// Likewise the cosine.
double hyperbolic_cosine(double x);
/// Likewise the tangent.
double hyperbolic_tangent(double x);

} // namespace metrify
