// Arbitrary bytes as a program: the driver returns a listing and does not fail.

#include "language/driver.h"
#include "machine/solver_binding.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    // A run does not depend on the previous one, except for a report that is still due.
    metrify::teardown_solver_binding();
    const metrify::listing first = metrify::interpret_dimensional_input_lines(text.c_str());
    metrify::teardown_solver_binding();
    const metrify::listing second = metrify::interpret_dimensional_input_lines(text.c_str());
    if (first.view() != second.view())
        std::abort();
    return 0;
}
