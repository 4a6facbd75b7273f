#pragma once

// A second implementation of the methods, on plain doubles and in the simplest form, to compare the number of
// evaluations with that of the program. The functions can be evaluated everywhere.

#include <functional>
#include <vector>

namespace metrify::test {

using number_function = std::function<double(double)>;
using numbers = std::vector<double>;
using table = std::vector<numbers>;
using value_function = std::function<double(const numbers&)>;
using system_function = std::function<numbers(const numbers&)>;

/// p + t direction
numbers along(const numbers& p, double t, const numbers& direction);

/// Each returns the number of evaluations; x is the point of the last one.
int plain_root(const number_function& f, double& x);
int plain_minimum(const number_function& f, double& x);
int plain_powell(const value_function& f, numbers& x);

/// The same, and whether the search succeeded.
int plain_newt(const system_function& f, numbers& x, bool& good);
int plain_broydn(const system_function& f, numbers& x, bool& good);

} // namespace metrify::test
