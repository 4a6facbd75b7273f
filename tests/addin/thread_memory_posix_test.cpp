#include "addin/worksheet_function.h"
#include "tests/addin/plain_host.h"
#include "xllrt/app/xll_exports.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <thread>

namespace {

using namespace metrify;

void CallOnThreads(int count) {
    for (int i = 0; i < count; ++i) {
        std::thread([] {
            // Half of the results are not returned; their memory is released with the thread.
            XLOPER12* record = Metrify_12(3.5, u"ft", u"m");
            if (record->val.array.columns != 2)
                ADD_FAILURE() << "not two cells";
            if (Metrify_12(1.0, u"atm", u"psi")->val.array.columns == 2)
                xlAutoFree12(Metrify_12(3.5, u"xyz", u"m"));
            Metrify_12(3.5, u"ft", u"kg");
        }).join();
    }
}

TEST(threads, ten_thousand_in_sequence_do_not_increase_memory) {
    constexpr std::size_t kGrowth = 64 * 1024;
    const PlainHost host;
    CallOnThreads(500);
    const std::size_t before = mallinfo2().uordblks;
    CallOnThreads(10000);
    EXPECT_LT(mallinfo2().uordblks, before + kGrowth);
}

} // namespace
