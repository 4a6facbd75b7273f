// A plan against the single conversion, its own application to many numbers, and the plan of the opposite
// direction.
//
// Input: eight bytes of a number, then the two unit texts, separated by a zero byte.

#include "base/number_text.h"
#include "conversion/conversion.h"
#include "conversion/conversion_plan.h"
#include "fuzz/input.h"
#include "machine/calculator.h"
#include "machine/solver_binding.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>

namespace {

using namespace metrify;
using metrify_fuzz::Require;

std::optional<conversion_plan> PlanOf(const std::string& from, const std::string& to) {
    calculator without_user_units;
    const calculator_scope scope(without_user_units);
    conversion_plan plan;
    std::string message;
    if (make_conversion_plan(from, to, plan, message))
        return plan;
    Require(message.starts_with("ERROR"));
    return std::nullopt;
}

bool IsSame(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (a != a && b != b);
}

// The numbers are a whole block of vector instructions and a remainder.
void CheckApplication(const conversion_plan& plan, double val) {
    std::array<double, 11> numbers;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = val * static_cast<double>(i) - 3.0;
    std::array<double, 11> together = numbers;
    plan.apply(together, together);
    std::array<double, 11> backward{};
    plan.apply(&numbers.back(), -1, &backward.back(), -1, numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        Require(IsSame(together[i], plan(numbers[i])));
        Require(IsSame(backward[i], plan(numbers[i])));
    }
}

// Numbers in whose range no intermediate result overflows or loses digits.
bool IsModerate(double x) {
    return std::abs(x) > 1e-60 && std::abs(x) < 1e60;
}

// What the addition of the offset cancels is not an error.
bool IsClose(double a, double b, double scale, double digits) {
    return std::abs(a - b) <= digits * (std::abs(scale) + std::abs(b));
}

double AsListed(double x) {
    number_buffer digits;
    double number = 0.0;
    const std::string text(format_double(x, digits));
    read_double(text.c_str(), number);
    return number;
}

// The worksheet function shows six digits of the number that it gets, and of the result.
void CheckSingle(const conversion_plan& plan, double val, const std::string& from, const std::string& to) {
    teardown_solver_binding();
    const conversion single = convert_units(val, from, to);
    if (single.outcome != conversion_outcome::converted)
        return;
    const double x = AsListed(val);
    Require(IsClose(single.number, plan(x), std::abs(plan.slope * x) + std::abs(plan.intercept), 1e-5));
}

void CheckOppositeDirection(const conversion_plan& plan, double val, const std::string& from) {
    const std::optional<conversion_plan> back = PlanOf(plan.units, from);
    if (!back)
        return;
    const double scale = std::abs(val) + std::abs(plan.intercept * back->slope) + std::abs(back->intercept);
    Require(IsClose((*back)(plan(val)), val, scale, 1e-13));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    metrify_fuzz::Input input(data, size);
    const double val = input.TakeNumber();
    const std::string from = input.TakeText();
    const std::string to = input.TakeText();
    const std::optional<conversion_plan> plan = PlanOf(from, to);
    if (!plan)
        return 0;
    CheckApplication(*plan, val);
    if (IsModerate(val) && IsModerate(plan->slope)) {
        CheckSingle(*plan, val, from, to);
        CheckOppositeDirection(*plan, val, from);
    }
    return 0;
}
