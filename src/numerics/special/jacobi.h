#pragma once

// The Jacobian elliptic functions.
//
// Source: R. Bulirsch, Numer. Math. 7 (1965), descending by Gauss's transformation; Press et al., Numerical
// Recipes, 6.11.
//
// Accuracy: 1e-7 absolute, as the transformations end when two means agree to 3e-4.
//
// Domain: every u; emmc is the complementary parameter 1 - k^2. Nothing fails, and there are no texts.

#include "base/text_str.h"

namespace metrify {

void math_func_sncndn(double u, double emmc, double& sn, double& cn, double& dn, text_str*& err);

} // namespace metrify
