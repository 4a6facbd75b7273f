// The same conversions with udunits2, which parses both unit texts on every call.

#include "base/number_text.h"
#include "bench/unit_pairs.h"

#include <benchmark/benchmark.h>
#include <memory>
#include <udunits2.h>

namespace {

using metrify_bench::unit_pair;

struct unit_release {
    void operator()(ut_unit* unit) const { ut_free(unit); }
};
struct converter_release {
    void operator()(cv_converter* converter) const { cv_free(converter); }
};
using unit_owner = std::unique_ptr<ut_unit, unit_release>;
using converter_owner = std::unique_ptr<cv_converter, converter_release>;

ut_system* units() {
    static ut_system* const system = [] {
        ut_set_error_message_handler(ut_ignore);
        return ut_read_xml(nullptr);
    }();
    return system;
}

template <const auto& pairs>
void conversion(benchmark::State& state) {
    for (auto _ : state) {
        for (const unit_pair& pair : pairs) {
            const unit_owner from(ut_parse(units(), pair.library_from, UT_ASCII));
            const unit_owner to(ut_parse(units(), pair.library_to, UT_ASCII));
            const converter_owner converter(ut_get_converter(from.get(), to.get()));
            if (converter == nullptr) {
                state.SkipWithError(pair.library_from);
                return;
            }
            metrify::number_buffer answer;
            benchmark::DoNotOptimize(metrify::format_double(cv_convert_double(converter.get(), 3.5), answer));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(std::size(pairs)));
}
BENCHMARK(conversion<metrify_bench::simple_pairs>)->Name("udunits2/simple");
BENCHMARK(conversion<metrify_bench::compound_pairs>)->Name("udunits2/compound");

} // namespace
