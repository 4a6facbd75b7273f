// Events with arguments of any number and type. A sink accepts those that it declares and refuses all others
// with a code of the interface; an observer gets texts of what exists.

#include "tests/integration/integration_host.h"

#include <algorithm>
#include <array>
#include <random>
#include <string>

namespace metrify::host {
namespace {

// Observes every event whose arguments are converted to texts.
template <class Args>
struct CountingObserver final : CXlEventObserver<Args> {
    void Notify(Args& /*args*/) override { ++count; }
    int count = 0;
};

class random_arguments : public testing::Test {
  protected:
    random_arguments() {
        AddObserverFunction(application);
        EXPECT_TRUE(RegisterAll(application));
        CXlAppEvents& events = application.events;
        events.workbookBeforeClose.AddObserver(&closing);
        events.workbookBeforeSave.AddObserver(&saving);
        events.selectionChange.AddObserver(&selection);
        events.beforeDoubleClick.AddObserver(&click);
        events.calculate.AddObserver(&calculation);
        events.workbookNewSheet.AddObserver(&new_sheet);
    }

    static constexpr unsigned kUsualSeed = 20220101;

    // Another seed with `--gtest_shuffle --gtest_random_seed=S`.
    static unsigned Seed() {
        const int shuffled = testing::UnitTest::GetInstance()->random_seed();
        return shuffled == 0 ? kUsualSeed : static_cast<unsigned>(shuffled);
    }

    unsigned Below(unsigned bound) { return static_cast<unsigned>(random_() % bound); }

    // Owns nothing: objects are those of the fixture, which outlive each event.
    VARIANT AnyArgument() {
        VARIANT any;
        VariantInit(&any);
        switch (Below(12)) {
        case 0:
            return workbook_.Get();
        case 1:
            return sheet_.Get();
        case 2:
            return range_.Get();
        case 3:
            V_VT(&any) = VT_DISPATCH; // no object
            return any;
        case 4:
            V_VT(&any) = VT_BOOL;
            V_BOOL(&any) = static_cast<VARIANT_BOOL>(random_());
            return any;
        case 5:
            V_VT(&any) = VT_BYREF | VT_BOOL;
            V_BOOLREF(&any) = &cancel_;
            return any;
        case 6:
            V_VT(&any) = VT_BYREF | VT_BOOL; // no boolean
            return any;
        case 7:
            V_VT(&any) = VT_BSTR; // no text
            return any;
        case 8:
            V_VT(&any) = VT_R8;
            V_R8(&any) = 3.5;
            return any;
        case 9:
            V_VT(&any) = VT_BYREF | VT_DISPATCH;
            return any;
        case 10:
            V_VT(&any) = VT_ARRAY | VT_VARIANT;
            return any;
        default:
            // Any other number that is no type of an event.
            V_VT(&any) = static_cast<VARTYPE>(0x0100U + Below(0x0E00));
            return any;
        }
    }

    HRESULT FireAny() {
        constexpr std::array<DISPID, 26> events = {1554, 1556, 1557, 1558, 1559, 1560, 1561, 1562, 1563,
                                                   1564, 1565, 1567, 1568, 1569, 1570, 1571, 1572, 1573,
                                                   1574, 1575, 2612, 2911, 0,    -1,   1555, 3000};
        std::array<VARIANT, 5> arguments;
        std::generate(arguments.begin(), arguments.end(), [this] { return AnyArgument(); });
        return host.automation.application().events().Fire(events[Below(events.size())],
                                                           std::span(arguments).first(Below(5)));
    }

    IntegrationHost host{16};
    CXlRealIntegration integration;
    CXllApp application{integration};
    CountingObserver<CXlBeforeCloseEventArgs> closing;
    CountingObserver<CXlBeforeSaveEventArgs> saving;
    CountingObserver<CXlRangeEventArgs> selection;
    CountingObserver<CXlCancellableRangeEventArgs> click;
    CountingObserver<CXlWorksheetEventArgs> calculation;
    CountingObserver<CXlWorkbookNewSheetEventArgs> new_sheet;

  private:
    std::mt19937 random_{Seed()};
    ComVariant workbook_ = host.Workbook();
    ComVariant sheet_ = host.Sheet();
    ComVariant range_ = host.Range();
    VARIANT_BOOL cancel_ = VARIANT_FALSE;
};

TEST_F(random_arguments, are_accepted_or_refused_and_leave_nothing) {
    SCOPED_TRACE("seed " + std::to_string(Seed()));
    constexpr int kEvents = 20000;
    const ReferenceLedger& ledger = host.automation.ledger();
    FireAny();
    const int objects = ledger.objects();
    int accepted = 0;
    for (int i = 0; i < kEvents; ++i) {
        const HRESULT code = FireAny();
        accepted += code == S_OK ? 1 : 0;
        ASSERT_TRUE(code == S_OK || code == DISP_E_MEMBERNOTFOUND || code == DISP_E_BADPARAMCOUNT ||
                    code == DISP_E_TYPEMISMATCH)
            << std::hex << code << " at event " << std::dec << i;
    }
    EXPECT_EQ(ledger.objects(), objects);
    EXPECT_GT(accepted, kEvents / 50);
    if (Seed() != kUsualSeed)
        return; // an observer may have no event
    EXPECT_GT(closing.count, 0);
    EXPECT_GT(saving.count, 0);
    EXPECT_GT(selection.count, 0);
    EXPECT_GT(click.count, 0);
    EXPECT_GT(calculation.count, 0);
    EXPECT_GT(new_sheet.count, 0);
}

} // namespace
} // namespace metrify::host
