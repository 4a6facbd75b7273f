// A conversion, first and repeated, against the line of the language that defines it: both cells agree bit by
// bit.
//
// Input: eight bytes of the number, then the two texts, separated by a zero byte.

#include "conversion/conversion.h"
#include "fuzz/input.h"
#include "machine/solver_binding.h"

#include <bit>
#include <cstdint>
#include <string>

namespace {

using namespace metrify;

void require_equal(const conversion& cells, const conversion& expected) {
    metrify_fuzz::Require(cells.outcome == expected.outcome && cells.text == expected.text &&
                          std::bit_cast<std::uint64_t>(cells.number) ==
                              std::bit_cast<std::uint64_t>(expected.number));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    metrify_fuzz::Input input(data, size);
    const double val = input.TakeNumber();
    const std::string in_units = input.TakeText();
    const std::string out_units = input.TakeText();
    // A report of an earlier input would be written in the first of the three only.
    teardown_solver_binding();
    const conversion expected = convert_units_by_line(val, in_units, out_units);
    for (int run = 1; run <= 2; ++run) {
        teardown_solver_binding();
        require_equal(convert_units(val, in_units, out_units), expected);
    }
    return 0;
}
