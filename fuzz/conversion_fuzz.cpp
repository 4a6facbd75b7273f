// A conversion, first and repeated, against the line of the language that defines it: both cells agree bit by
// bit.
//
// Input: eight bytes of the number, then the two texts, separated by a zero byte.

#include "conversion/conversion.h"
#include "machine/solver_binding.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

using namespace metrify;

void require_equal(const conversion& cells, const conversion& expected) {
    if (cells.outcome != expected.outcome || cells.text != expected.text ||
        std::bit_cast<std::uint64_t>(cells.number) != std::bit_cast<std::uint64_t>(expected.number))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    double val = 3.5;
    if (size < sizeof val)
        return 0;
    std::memcpy(&val, data, sizeof val);
    const std::string texts(reinterpret_cast<const char*>(data) + sizeof val, size - sizeof val);
    const std::size_t zero = std::min(texts.find('\0'), texts.size());
    const std::string in_units = texts.substr(0, zero);
    const std::string out_units = texts.substr(std::min(zero + 1, texts.size())).c_str();
    // A report of an earlier input would be written in the first of the three only.
    teardown_solver_binding();
    const conversion expected = convert_units_by_line(val, in_units, out_units);
    for (int run = 1; run <= 2; ++run) {
        teardown_solver_binding();
        require_equal(convert_units(val, in_units, out_units), expected);
    }
    return 0;
}
