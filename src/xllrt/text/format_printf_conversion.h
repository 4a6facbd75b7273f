#pragma once

// One conversion of a printf format, without its percent sign and without the arguments of its stars.

#include <cstddef>
#include <optional>

namespace metrify {

enum class PrintfLength { none, hh, h, l, ll, j, z, t, L };

struct PrintfConversion {
    bool left = false;      // "-"
    bool zeros = false;     // "0"
    bool alternate = false; // "#"
    char sign = 0;          // before a non-negative number: '+', ' ' or none
    std::size_t width = 0;
    std::optional<int> precision;
    PrintfLength length = PrintfLength::none;
    char letter = 0; // 0 if the letter is not a conversion
};

} // namespace metrify
