#include "addin/worksheet_function.h"
#include "tests/addin/plain_host.h"
#include "tests/xllrt/scripted_host.h"
#include "xllrt/xll_exports.h"

#include <gtest/gtest.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

using namespace metrify;

// What a fault breaks off leaves its memory behind.
class LeaksAreMeant {
  public:
#ifdef __SANITIZE_ADDRESS__
    LeaksAreMeant() {
        __lsan_disable();
    }
    ~LeaksAreMeant() {
        __lsan_enable();
    }
#else
    LeaksAreMeant() {}
    ~LeaksAreMeant() {}
#endif
    LeaksAreMeant(const LeaksAreMeant&) = delete;
    LeaksAreMeant& operator=(const LeaksAreMeant&) = delete;
};

int METRIFY_HOST_CALL TouchNothing(int /*function*/, int /*count*/, XLOPER12* /*arguments*/[],
                                   XLOPER12* /*result*/) {
    // The compiler must not know that nothing is there.
    static volatile std::uintptr_t address = 64;
    *reinterpret_cast<volatile int*>(address) = 1;
    return xlretSuccess;
}

Excel12Entry FindTouchNothing() {
    return TouchNothing;
}

std::string Called() {
    XLOPER12* record = Metrify_12(3.5, u"ft", u"m");
    std::string text = Rendered(*record);
    xlAutoFree12(record);
    return text;
}

TEST(Fault, an_access_violation_in_the_called_code_becomes_the_cells_text) {
    {
        const PlainHost host(FindTouchNothing);
        const LeaksAreMeant leaks;
        EXPECT_EQ(Called(), "\"#ERROR: 'C' exception 0xC0000005\"");
        EXPECT_EQ(Called(), "\"#ERROR: 'C' exception 0xC0000005\"") << "and again";
    }
    const PlainHost host;
    EXPECT_EQ(Called(), "{1.0668,\"m\n\n\"}") << "the process lives";
}

} // namespace
