#pragma once

// The texts of numbers in a printf format, before they are padded.

#include "xllrt/text/format_printf_conversion.h"

#include <cstdint>
#include <string>

namespace metrify {

/// Zeros that fill up the width go between the two.
struct PrintfNumber {
    std::string prefix; ///< the sign, or "0x"
    std::string digits;
};

/// For the letters d, i, u, x, X and o. `bits` is how many bits of the value the argument's type has; a
/// length of the conversion that has fewer takes the lowest.
PrintfNumber IntegerText(const PrintfConversion& conversion, std::uint64_t value, int bits);

/// For the letters e, f, g and a, and their capitals.
PrintfNumber FloatText(const PrintfConversion& conversion, double value);

} // namespace metrify
