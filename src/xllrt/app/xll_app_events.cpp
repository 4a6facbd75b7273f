// The host's events on their way to whoever handles them.

#include "xllrt/app/xll_app.h"
#include "xllrt/event/event_call.h"
#include "xllrt/text/code_page.h"

#include <utility>

namespace metrify {

void EnableHostEvent(int number, bool on) {
    if (CXllApp* application = CXllApp::Instance())
        application->EnableEvent(number, on);
}

IXlComHolder& CXllApp::ComHolder() {
    if (!com_holder_) {
        std::unique_ptr<IXlComHolder> holder = integration_.MakeComHolder();
        XlComFailure failure;
        if (!holder->Start(failure))
            throw CXlComException(failure.text, failure.code);
        com_holder_ = std::move(holder);
    }
    return *com_holder_;
}

void CXllApp::EnableEvent(int number, bool on) {
    XlComFailure failure;
    if (on && !ComHolder().Connect(failure))
        throw CXlComException(failure.text, failure.code);
    // The connection stays when an event is switched off.
    eventSwitches.at(static_cast<std::size_t>(number)) = on;
}

bool CXllApp::RaiseEvent(int number, bool is_cancellable, std::string_view signature,
                         std::initializer_list<XlEventArgument> arguments) {
    const auto index = static_cast<std::size_t>(number);
    if (index >= kEventCount)
        return false;
    std::u16string target = ToWide(eventHandlers[index]);
    // The observer function is told which event it is; a macro set for an event knows.
    const bool is_observer_call = target.empty();
    if (is_observer_call) {
        if (observerFunctionName.empty() || !eventSwitches[index])
            return false;
        target = observerFunctionName;
    }
    CXlOper answer;
    try {
        IXlComHolder& holder = ComHolder();
        XlEventCall call(holder, target);
        if (is_observer_call)
            call.AddNumber(number);
        call.AddArguments(signature, {arguments});
        return call.Run(answer) && is_cancellable && answer.ToBool();
    } catch (const CXlComException&) {
        // Whoever raises an event is not told why nobody answers.
        return false;
    }
}

bool CXllApp::OnNewWorkbook(XlHostObject* workbook) {
    return RaiseEvent(0, false, "B", {workbook});
}

bool CXllApp::OnSelectionChange(XlHostObject* sheet, XlHostObject* range) {
    return RaiseEvent(1, false, "SR", {sheet, range});
}

bool CXllApp::OnBeforeDoubleClick(XlHostObject* sheet, XlHostObject* range) {
    return RaiseEvent(2, true, "SR", {sheet, range});
}

bool CXllApp::OnBeforeRightClick(XlHostObject* sheet, XlHostObject* range) {
    return RaiseEvent(3, true, "SR", {sheet, range});
}

bool CXllApp::OnSheetActivate(XlHostObject* sheet) {
    return RaiseEvent(4, false, "S", {sheet});
}

bool CXllApp::OnSheetDeactivate(XlHostObject* sheet) {
    return RaiseEvent(5, false, "S", {sheet});
}

bool CXllApp::OnCalculate(XlHostObject* sheet) {
    return RaiseEvent(6, false, "S", {sheet});
}

bool CXllApp::OnSheetChange(XlHostObject* sheet, XlHostObject* range) {
    return RaiseEvent(7, false, "SR", {sheet, range});
}

bool CXllApp::OnWorkbookOpen(XlHostObject* workbook) {
    return RaiseEvent(8, false, "B", {workbook});
}

bool CXllApp::OnWorkbookActivate(XlHostObject* workbook) {
    return RaiseEvent(9, false, "B", {workbook});
}

bool CXllApp::OnWorkbookDeactivate(XlHostObject* workbook) {
    return RaiseEvent(10, false, "B", {workbook});
}

bool CXllApp::OnWorkbookBeforeClose(XlHostObject* workbook) {
    return RaiseEvent(11, true, "B", {workbook});
}

bool CXllApp::OnWorkbookBeforeSave(XlHostObject* workbook, bool save_as) {
    return RaiseEvent(12, true, "BF", {workbook, save_as});
}

bool CXllApp::OnWorkbookEvent13(XlHostObject* workbook) {
    return RaiseEvent(13, true, "B", {workbook});
}

bool CXllApp::OnWorkbookNewSheet(XlHostObject* workbook, XlHostObject* sheet) {
    return RaiseEvent(14, false, "BS", {workbook, sheet});
}

bool CXllApp::OnWorkbookEvent15(XlHostObject* workbook) {
    return RaiseEvent(15, false, "B", {workbook});
}

bool CXllApp::OnWorkbookEvent16(XlHostObject* workbook) {
    return RaiseEvent(16, false, "B", {workbook});
}

void CXllApp::OnReservedEvent17() {}

void CXllApp::OnReservedEvent18() {}

void CXllApp::OnReservedEvent19() {}

bool CXllApp::OnAfterCalculate() {
    return RaiseEvent(20, false, "", {});
}

bool CXllApp::OnWorkbookAfterSave(XlHostObject* workbook, bool success) {
    return RaiseEvent(21, false, "BF", {workbook, success});
}

} // namespace metrify
