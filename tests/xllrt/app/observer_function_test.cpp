#include "add_in_fixture.h"
#include "xllrt/app/observer_function.h"
#include "xllrt/app/xll_exports.h"

#include <gmock/gmock.h>

namespace {

using namespace metrify;
using testing::ElementsAre;
using testing::IsEmpty;

class ObserverFunction : public AddInTest {
  protected:
    // Notifies an observer of an event and returns the cancel mark, if there is one.
    template <class Event, class Describe>
    CXlOper Dispatch(Event& event, int number, Describe describe) {
        struct Observer final : CXlEventObserver<typename Event::Args> {
            explicit Observer(Describe d) : describe(d) {}
            void Notify(typename Event::Args& args) override { describe(args); }
            Describe describe;
        };
        Observer observer(describe);
        event.AddObserver(&observer);
        CXlOper result(false);
        CXlOper first;
        CXlOper second;
        first.SetText("first");
        second.SetText("TRUE");
        DispatchEvent(app, result, number, first, second);
        event.RemoveObserver(&observer);
        return result;
    }

    RecordingApp app{host};
};

TEST_F(ObserverFunction, is_named_after_the_file_with_underscores_for_all_but_letters_and_digits) {
    host.path = u"C:\\My Add-ins\\My add-in 2.xll";
    AddObserverFunction(app);
    EXPECT_EQ(app.observerFunctionName, u"xll_My_add_in_2_observer");
}

TEST_F(ObserverFunction, has_this_descriptor) {
    AddObserverFunction(app);
    ASSERT_EQ(app.functions.All().size(), 1U);
    const CXlFunctionDescriptor& descriptor = *app.functions.All()[0];
    EXPECT_EQ(descriptor.functionName, u"xll_Metrify_observer");
    EXPECT_EQ(descriptor.narrow.argumentNames, "EventNumber,Arg1,Arg2,Arg3");
    EXPECT_EQ(descriptor.wide.argumentNames, u"EventNumber,Arg1,Arg2,Arg3");
    EXPECT_EQ(descriptor.narrow.entry, "CXlApp_ObserverEventHandler4");
    EXPECT_EQ(descriptor.wide.entry, "CXlApp_ObserverEventHandler12");
    EXPECT_EQ(descriptor.narrow.type, "RJPPP");
    EXPECT_EQ(descriptor.wide.type, "RJQQQ");
    EXPECT_EQ(descriptor.narrow.category, "User Defined");
    EXPECT_EQ(descriptor.wide.category, u"User Defined");
    EXPECT_EQ(descriptor.helpId, 1);
    EXPECT_EQ(descriptor.macroType, 2);
    EXPECT_EQ(descriptor.wide.description, u"");
    EXPECT_THAT(descriptor.wide.argumentHelp, IsEmpty());
}

TEST_F(ObserverFunction, workbook_events_get_the_first_argument) {
    const auto expect = [](CXlWorkbookEventArgs& args) { EXPECT_EQ(args.workbook, "first"); };
    EXPECT_FALSE(Dispatch(app.events.newWorkbook, 0, expect).ToBool());
    Dispatch(app.events.workbookOpen, 8, expect);
    Dispatch(app.events.workbookActivate, 9, expect);
    Dispatch(app.events.workbookDeactivate, 10, expect);
}

TEST_F(ObserverFunction, worksheet_events_get_the_first_argument) {
    int count = 0;
    const auto expect = [&count](CXlWorksheetEventArgs& args) {
        EXPECT_EQ(args.sheet, "first");
        ++count;
    };
    Dispatch(app.events.sheetActivate, 4, expect);
    Dispatch(app.events.sheetDeactivate, 5, expect);
    Dispatch(app.events.calculate, 6, expect);
    EXPECT_EQ(count, 3);
}

TEST_F(ObserverFunction, range_events_get_both_arguments) {
    int count = 0;
    const auto expect = [&count](CXlRangeEventArgs& args) {
        EXPECT_EQ(args.sheet, "first");
        EXPECT_EQ(args.range, "TRUE");
        ++count;
    };
    Dispatch(app.events.selectionChange, 1, expect);
    Dispatch(app.events.sheetChange, 7, expect);
    EXPECT_EQ(count, 2);
}

TEST_F(ObserverFunction, the_cancel_mark_of_a_click_becomes_the_result) {
    const auto cancel = [](CXlCancellableRangeEventArgs& args) {
        EXPECT_EQ(args.sheet, "first");
        EXPECT_EQ(args.range, "TRUE");
        EXPECT_FALSE(args.cancel);
        args.cancel = true;
    };
    EXPECT_TRUE(Dispatch(app.events.beforeDoubleClick, 2, cancel).ToBool());
    EXPECT_TRUE(Dispatch(app.events.beforeRightClick, 3, cancel).ToBool());
    EXPECT_FALSE(Dispatch(app.events.beforeRightClick, 3, [](auto&) {}).ToBool());
}

TEST_F(ObserverFunction, the_cancel_mark_of_a_close_becomes_the_result) {
    EXPECT_TRUE(Dispatch(
                    app.events.workbookBeforeClose, 11,
                    [](CXlBeforeCloseEventArgs& args) {
                        EXPECT_EQ(args.workbook, "first");
                        args.cancel = true;
                    })
                    .ToBool());
}

TEST_F(ObserverFunction, the_cancel_mark_of_a_save_becomes_the_result) {
    EXPECT_TRUE(Dispatch(
                    app.events.workbookBeforeSave, 12,
                    [](CXlBeforeSaveEventArgs& args) {
                        EXPECT_EQ(args.workbook, "first");
                        EXPECT_TRUE(args.saveAs);
                        args.cancel = true;
                    })
                    .ToBool());
}

TEST_F(ObserverFunction, the_other_events_get_their_arguments) {
    int count = 0;
    Dispatch(
        app.events.workbookNewSheet, 14,
        [&count](CXlWorkbookNewSheetEventArgs& args) {
            EXPECT_EQ(args.workbook, "first");
            EXPECT_EQ(args.sheet, "TRUE");
            ++count;
        });
    Dispatch(app.events.afterCalculate, 20, [&count](CXlAfterCalculateEventArgs&) { ++count; });
    Dispatch(app.events.workbookAfterSave, 21, [&count](CXlAfterSaveEventArgs& args) {
        EXPECT_EQ(args.workbook, "first");
        EXPECT_TRUE(args.success);
        ++count;
    });
    EXPECT_EQ(count, 3);
}

TEST_F(ObserverFunction, numbers_without_event_do_nothing) {
    for (const int number : {-1, 13, 15, 16, 17, 18, 19, 22, 1000}) {
        CXlOper result(false);
        DispatchEvent(app, result, number, CXlOper(), CXlOper());
        EXPECT_TRUE(result.IsType(xltypeBool));
        EXPECT_FALSE(result.ToBool());
    }
}

// ---- The exports

class CancellingListener final : public CXlEventObserver<CXlBeforeCloseEventArgs> {
  public:
    void Notify(CXlBeforeCloseEventArgs& args) override {
        workbook = args.workbook;
        args.cancel = true;
    }
    std::string workbook;
};

TEST_F(ObserverFunction, the_wide_entry_wraps_its_arguments_and_returns_the_answer) {
    CancellingListener listener;
    app.events.workbookBeforeClose.AddObserver(&listener);
    XCHAR text[] = u"\4Book";
    XLOPER12 first{};
    first.xltype = xltypeStr;
    first.val.str = text;
    const XLOPER12* answer = CXlApp_ObserverEventHandler12(11, &first, nullptr, nullptr);
    EXPECT_EQ(Rendered(*answer), "TRUE");
    EXPECT_EQ(listener.workbook, "Book");
    app.events.workbookBeforeClose.RemoveObserver(&listener);
    EXPECT_EQ(Rendered(*CXlApp_ObserverEventHandler12(11, &first, nullptr, nullptr)), "FALSE");
}

TEST_F(ObserverFunction, the_narrow_entry_does_the_same) {
    CancellingListener listener;
    app.events.workbookBeforeClose.AddObserver(&listener);
    char text[] = "\4Book";
    XLOPER first{};
    first.xltype = xltypeStr;
    first.val.str = text;
    EXPECT_EQ(Rendered(*CXlApp_ObserverEventHandler4(11, &first, nullptr, nullptr)), "TRUE");
    EXPECT_EQ(listener.workbook, "Book");
    EXPECT_EQ(Rendered(*CXlApp_ObserverEventHandler4(99, &first, nullptr, nullptr)), "FALSE");
    app.events.workbookBeforeClose.RemoveObserver(&listener);
}

} // namespace
