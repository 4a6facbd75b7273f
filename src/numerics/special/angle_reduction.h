#pragma once

#include <cstdint>

namespace metrify {

/// An angle less its quarter turns.
struct reduced_angle {
    double rest;            ///< in radians, within pi/4 of zero
    std::uint32_t quadrant; ///< the quarter turns, 0 to 3
};

/// Reduces an angle of x radians, of any finite size, with all the digits of pi that it takes. The rest has
/// an error of half a unit in the last place, next to a multiple of pi/2 too.
reduced_angle reduce_large_angle(double x);

} // namespace metrify
