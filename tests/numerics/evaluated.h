#pragma once

// The result of a numerical routine and its error text.

#include "base/text_str.h"

#include <limits>
#include <string>

namespace metrify::test {

constexpr double quiet_nan = std::numeric_limits<double>::quiet_NaN();
constexpr double plus_infinity = std::numeric_limits<double>::infinity();

struct evaluated {
    double value;
    std::string err;
};

/// Calls a routine that takes the error text last.
template <class Routine, class... Arguments>
evaluated evaluate(Routine routine, Arguments... arguments) {
    work_text err;
    const double value = routine(arguments..., err.str);
    return {value, std::string(err.view())};
}

} // namespace metrify::test
