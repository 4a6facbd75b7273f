// The observer function: its name, its arguments as passed to observers, and its result.

#include "xllrt/app/observer_function.h"
#include "xllrt/app/xll_exports.h"
#include "xllrt/value/text_value.h"
#include "xllrt/value/thread_state.h"

#include <functional>
#include <gmock/gmock.h>
#include <optional>

namespace metrify {
namespace {

// Captures the arguments, and sets the cancel mark if there is one.
template <class Args>
class CapturingObserver final : public CXlEventObserver<Args> {
  public:
    explicit CapturingObserver(CXlEvent<Args>& event) : event_(event) { event_.AddObserver(this); }
    CapturingObserver(const CapturingObserver&) = delete;
    CapturingObserver& operator=(const CapturingObserver&) = delete;
    ~CapturingObserver() { event_.RemoveObserver(this); }

    void Notify(Args& args) override {
        received = args;
        if constexpr (requires { args.cancel; })
            args.cancel = cancels;
    }

    std::optional<Args> received;
    bool cancels = false;

  private:
    CXlEvent<Args>& event_;
};

class DispatchTest : public testing::Test {
  protected:
    DispatchTest() { AllocateThreadStates(); }
    ~DispatchTest() override { DestroyThreadState(); }

    // Dispatches an event and returns the answer.
    bool Dispatch(int number) {
        CXlOper result(false);
        DispatchEvent(app, result, number, first, second);
        EXPECT_TRUE(result.IsType(xltypeBool));
        return result.ToBool();
    }

    CXllApp app;
    CXlOper first = TextValue("first");
    CXlOper second = TextValue("second");
};

// ---- Each event

template <class Args>
void ExpectWorkbook(CXlEvent<Args>& event, const std::function<bool()>& dispatch) {
    CapturingObserver<Args> observer(event);
    EXPECT_FALSE(dispatch());
    ASSERT_TRUE(observer.received);
    EXPECT_EQ(observer.received->workbook, "first");
}

TEST_F(DispatchTest, events_0_8_9_and_10_pass_a_workbook) {
    ExpectWorkbook<CXlWorkbookEventArgs>(
        app.events.newWorkbook, [&] { return Dispatch(0); });
    ExpectWorkbook<CXlWorkbookEventArgs>(
        app.events.workbookOpen, [&] { return Dispatch(8); });
    ExpectWorkbook<CXlWorkbookEventArgs>(
        app.events.workbookActivate, [&] { return Dispatch(9); });
    ExpectWorkbook<CXlWorkbookEventArgs>(app.events.workbookDeactivate, [&] { return Dispatch(10); });
}

TEST_F(DispatchTest, events_4_5_and_6_pass_a_sheet) {
    const auto expect = [&](CXlEvent<CXlWorksheetEventArgs>& event, int number) {
        CapturingObserver<CXlWorksheetEventArgs> observer(event);
        EXPECT_FALSE(Dispatch(number));
        ASSERT_TRUE(observer.received) << number;
        EXPECT_EQ(observer.received->sheet, "first");
    };
    expect(app.events.sheetActivate, 4);
    expect(app.events.sheetDeactivate, 5);
    expect(app.events.calculate, 6);
}

TEST_F(DispatchTest, events_1_and_7_pass_a_sheet_and_a_range) {
    const auto expect = [&](CXlEvent<CXlRangeEventArgs>& event, int number) {
        CapturingObserver<CXlRangeEventArgs> observer(event);
        EXPECT_FALSE(Dispatch(number));
        ASSERT_TRUE(observer.received) << number;
        EXPECT_EQ(observer.received->sheet, "first");
        EXPECT_EQ(observer.received->range, "second");
    };
    expect(app.events.selectionChange, 1);
    expect(app.events.sheetChange, 7);
}

TEST_F(DispatchTest, events_2_and_3_pass_a_sheet_and_a_range_and_can_be_cancelled) {
    const auto expect = [&](CXlEvent<CXlCancellableRangeEventArgs>& event, int number) {
        CapturingObserver<CXlCancellableRangeEventArgs> observer(event);
        EXPECT_FALSE(Dispatch(number));
        ASSERT_TRUE(observer.received) << number;
        EXPECT_EQ(observer.received->sheet, "first");
        EXPECT_EQ(observer.received->range, "second");
        EXPECT_FALSE(observer.received->cancel);
        observer.cancels = true;
        EXPECT_TRUE(Dispatch(number));
    };
    expect(app.events.beforeDoubleClick, 2);
    expect(app.events.beforeRightClick, 3);
}

TEST_F(DispatchTest, event_11_passes_a_workbook_and_can_be_cancelled) {
    CapturingObserver<CXlBeforeCloseEventArgs> observer(app.events.workbookBeforeClose);
    EXPECT_FALSE(Dispatch(11));
    ASSERT_TRUE(observer.received);
    EXPECT_EQ(observer.received->workbook, "first");
    EXPECT_FALSE(observer.received->cancel);
    observer.cancels = true;
    EXPECT_TRUE(Dispatch(11));
}

TEST_F(DispatchTest, event_12_passes_a_workbook_and_the_save_as_flag_and_can_be_cancelled) {
    CapturingObserver<CXlBeforeSaveEventArgs> observer(app.events.workbookBeforeSave);
    second = CXlOper(true);
    EXPECT_FALSE(Dispatch(12));
    ASSERT_TRUE(observer.received);
    EXPECT_EQ(observer.received->workbook, "first");
    EXPECT_TRUE(observer.received->saveAs);
    EXPECT_FALSE(observer.received->cancel);
    observer.cancels = true;
    second = CXlOper(false);
    EXPECT_TRUE(Dispatch(12));
    EXPECT_FALSE(observer.received->saveAs);
}

TEST_F(DispatchTest, event_14_passes_a_workbook_and_its_new_sheet) {
    CapturingObserver<CXlWorkbookNewSheetEventArgs> observer(app.events.workbookNewSheet);
    EXPECT_FALSE(Dispatch(14));
    ASSERT_TRUE(observer.received);
    EXPECT_EQ(observer.received->workbook, "first");
    EXPECT_EQ(observer.received->sheet, "second");
}

TEST_F(DispatchTest, event_20_passes_no_arguments) {
    CapturingObserver<CXlAfterCalculateEventArgs> observer(app.events.afterCalculate);
    EXPECT_FALSE(Dispatch(20));
    EXPECT_TRUE(observer.received);
}

TEST_F(DispatchTest, event_21_passes_a_workbook_and_the_success_flag) {
    CapturingObserver<CXlAfterSaveEventArgs> observer(app.events.workbookAfterSave);
    second = CXlOper(true);
    EXPECT_FALSE(Dispatch(21));
    ASSERT_TRUE(observer.received);
    EXPECT_EQ(observer.received->workbook, "first");
    EXPECT_TRUE(observer.received->success);
}

TEST_F(DispatchTest, all_observers_of_an_event_are_notified_and_the_last_mark_is_the_answer) {
    CapturingObserver<CXlBeforeCloseEventArgs> first_observer(app.events.workbookBeforeClose);
    CapturingObserver<CXlBeforeCloseEventArgs> second_observer(app.events.workbookBeforeClose);
    first_observer.cancels = true;
    EXPECT_FALSE(Dispatch(11));
    EXPECT_TRUE(second_observer.received->cancel) << "it sees what the one before it left";
}

// ---- Numbers without an event, and arguments of the wrong type

TEST_F(DispatchTest, numbers_without_an_event_do_nothing) {
    for (int number : {-1, 13, 15, 16, 17, 18, 19, 22, 65536, -2147483647 - 1, 2147483647}) {
        CXlOper result(3.5);
        DispatchEvent(app, result, number, first, second);
        EXPECT_EQ(result.ToNumber(), 3.5) << number;
    }
}

TEST_F(DispatchTest, an_event_without_observers_answers_false) {
    for (int number : {2, 3, 11, 12})
        EXPECT_FALSE(Dispatch(number)) << number;
}

TEST_F(DispatchTest, arguments_that_are_no_texts_read_as_texts_where_they_can) {
    CapturingObserver<CXlRangeEventArgs> observer(app.events.sheetChange);
    first = CXlOper(false);
    second = CXlOper(true);
    Dispatch(7);
    EXPECT_EQ(observer.received->sheet, "FALSE");
    EXPECT_EQ(observer.received->range, "TRUE");
    first.SetError(xlerrNA);
    second.Free();
    Dispatch(7);
    EXPECT_EQ(observer.received->sheet, "");
    EXPECT_EQ(observer.received->range, "");
}

TEST_F(DispatchTest, a_flag_that_is_no_boolean_is_read_as_one_where_it_can_be) {
    CapturingObserver<CXlBeforeSaveEventArgs> observer(app.events.workbookBeforeSave);
    second = CXlOper(2.0);
    Dispatch(12);
    EXPECT_TRUE(observer.received->saveAs);
    second = TextValue("perhaps");
    Dispatch(12);
    EXPECT_FALSE(observer.received->saveAs);
    second.Free();
    Dispatch(12);
    EXPECT_FALSE(observer.received->saveAs);
}

// ---- The exported entry points

TEST_F(DispatchTest, the_narrow_entry_reads_its_records_and_answers_with_a_boolean) {
    CapturingObserver<CXlCancellableRangeEventArgs> observer(app.events.beforeRightClick);
    observer.cancels = true;
    XLOPER* const answer = CXlApp_ObserverEventHandler4(3, first.Record4(), second.Record4(), nullptr);
    ASSERT_TRUE(observer.received);
    EXPECT_EQ(observer.received->sheet, "first");
    EXPECT_EQ(observer.received->range, "second");
    EXPECT_EQ(answer->xltype & ~unsigned{xlbitDLLFree | xlbitXLFree}, xltypeBool);
    EXPECT_EQ(answer->val.xbool, 1);
}

TEST_F(DispatchTest, the_wide_entry_reads_its_records_and_answers_with_a_boolean) {
    CapturingObserver<CXlCancellableRangeEventArgs> observer(app.events.beforeRightClick);
    observer.cancels = true;
    char16_t sheet[] = u"\x0005Sheet";
    char16_t range[] = u"\x0004$A$1";
    XLOPER12 sheet_record{};
    sheet_record.xltype = xltypeStr;
    sheet_record.val.str = sheet;
    XLOPER12 range_record{};
    range_record.xltype = xltypeStr;
    range_record.val.str = range;
    XLOPER12* const answer = CXlApp_ObserverEventHandler12(3, &sheet_record, &range_record, nullptr);
    ASSERT_TRUE(observer.received);
    EXPECT_EQ(observer.received->sheet, "Sheet");
    EXPECT_EQ(observer.received->range, "$A$1");
    EXPECT_EQ(answer->xltype & ~unsigned{xlbitDLLFree | xlbitXLFree}, xltypeBool);
    EXPECT_EQ(answer->val.xbool, 1);
}

TEST_F(DispatchTest, the_entries_answer_false_to_an_unknown_number_and_to_null_arguments) {
    CapturingObserver<CXlWorksheetEventArgs> observer(app.events.calculate);
    EXPECT_EQ(CXlApp_ObserverEventHandler4(99, nullptr, nullptr, nullptr)->val.xbool, 0);
    EXPECT_EQ(CXlApp_ObserverEventHandler12(-7, nullptr, nullptr, nullptr)->val.xbool, 0);
    EXPECT_EQ(CXlApp_ObserverEventHandler12(6, nullptr, nullptr, nullptr)->val.xbool, 0);
    ASSERT_TRUE(observer.received);
    EXPECT_EQ(observer.received->sheet, "");
}

TEST_F(DispatchTest, the_entries_answer_false_without_an_application) {
    CXllApp::SetInstance(nullptr);
    EXPECT_EQ(CXlApp_ObserverEventHandler12(11, nullptr, nullptr, nullptr)->val.xbool, 0);
    CXllApp::SetInstance(&app);
}

TEST_F(DispatchTest, what_an_observer_throws_leaves_the_entry) {
    class Throwing final : public CXlEventObserver<CXlWorksheetEventArgs> {
      public:
        void Notify(CXlWorksheetEventArgs& /*args*/) override {
            throw CXlRuntimeException(std::string("observer failed"));
        }
    };
    Throwing observer;
    app.events.calculate.AddObserver(&observer);
    EXPECT_THROW(CXlApp_ObserverEventHandler12(6, nullptr, nullptr, nullptr), CXlRuntimeException);
    app.events.calculate.RemoveObserver(&observer);
}

} // namespace
} // namespace metrify
