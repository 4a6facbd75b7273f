#pragma once

// The methods once more, on plain doubles and in the plainest form, so that evaluations can be counted
// against those of the program. The functions evaluate everywhere.

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

/// Each gives the number of evaluations from the start on; x is where the last one was.
int plain_root(const number_function& f, double& x);
int plain_minimum(const number_function& f, double& x);
int plain_powell(const value_function& f, numbers& x);

/// The same, and whether the result is good.
int plain_newt(const system_function& f, numbers& x, bool& good);
int plain_broydn(const system_function& f, numbers& x, bool& good);

} // namespace metrify::test
