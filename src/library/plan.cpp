// Conversions of many numbers.

#include "conversion/conversion_plan.h"
#include "library/call.h"
#include "machine/calculator.h"

#include <limits>
#include <memory>
#include <string>

using namespace metrify;
using namespace metrify::library;

struct metrify_plan {
    conversion_plan plan;
};

namespace {

constexpr std::ptrdiff_t size_of_number = sizeof(double);

} // namespace

metrify_status metrify_plan_new(const char* in_units, size_t in_size, const char* out_units, size_t out_size,
                                metrify_plan** plan) {
    return guarded([&] {
        if (plan == nullptr)
            return fail(METRIFY_BAD_ARGUMENT, null_result);
        *plan = nullptr;
        const argument in = check_text(in_units, in_size);
        const argument out = check_text(out_units, out_size);
        if (!in.fault.empty() || !out.fault.empty())
            return fail(METRIFY_BAD_ARGUMENT, in.fault.empty() ? out.fault : in.fault);
        calculator without_user_units;
        const calculator_scope scope(without_user_units);
        auto made = std::make_unique<metrify_plan>();
        std::string message;
        if (!make_conversion_plan(in.text, out.text, made->plan, message))
            return fail(METRIFY_REFUSED, message);
        *plan = made.release();
        return succeed();
    });
}

metrify_status metrify_plan_apply(const metrify_plan* plan, const double* from, ptrdiff_t from_stride,
                                  double* to, ptrdiff_t to_stride, size_t count) {
    return guarded([&] {
        if (plan == nullptr)
            return fail(METRIFY_BAD_ARGUMENT, "the plan is null");
        if (count != 0 && (from == nullptr || to == nullptr))
            return fail(METRIFY_BAD_ARGUMENT, "the numbers are null");
        if (from_stride % size_of_number != 0 || to_stride % size_of_number != 0)
            return fail(METRIFY_BAD_ARGUMENT, "a stride is not a multiple of the size of a number");
        if (from_stride == size_of_number && to_stride == size_of_number)
            plan->plan.apply({from, count}, {to, count});
        else
            plan->plan.apply(from, from_stride / size_of_number, to, to_stride / size_of_number, count);
        return succeed();
    });
}

double metrify_plan_convert(const metrify_plan* plan, double value) {
    return plan != nullptr ? plan->plan(value) : std::numeric_limits<double>::quiet_NaN();
}

const char* metrify_plan_units(const metrify_plan* plan) {
    return plan != nullptr ? plan->plan.units.c_str() : "";
}

void metrify_plan_free(metrify_plan* plan) {
    const std::unique_ptr<metrify_plan> owner(plan);
}
