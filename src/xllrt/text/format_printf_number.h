#pragma once

// The texts of numbers in a printf format, before padding.

#include "xllrt/text/format_printf_conversion.h"

#include <cstdint>
#include <string>

namespace metrify {

/// Zeros that pad to the width are inserted between the two.
struct PrintfNumber {
    std::string prefix; ///< the sign, or "0x"
    std::string digits;
};

/// For the letters d, i, u, x, X and o. `bits` is the number of bits of the argument's type; a conversion
/// with a shorter length takes the lowest ones.
PrintfNumber IntegerText(const PrintfConversion& conversion, std::uint64_t value, int bits);

/// For the letters e, f, g and a, and their capitals.
PrintfNumber FloatText(const PrintfConversion& conversion, double value);

} // namespace metrify
