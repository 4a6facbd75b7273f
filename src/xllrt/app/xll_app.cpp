#include "xllrt/app/xll_app.h"

#include "xllrt/app/host_event_table.h"
#include "xllrt/event/event_call.h"
#include "xllrt/gate/host_gate.h"
#include "xllrt/gate/host_paths.h"
#include "xllrt/gate/host_window.h"
#include "xllrt/platform/module_path.h"
#include "xllrt/registry/function_result.h"
#include "xllrt/text/code_page.h"
#include "xllrt/text/format_printf.h"
#include "xllrt/text/message_catalogue.h"

#include <utility>

namespace metrify {

namespace {

constinit CXllApp* current_application = nullptr;

class CountedEvent {
  public:
    explicit CountedEvent(int& count) : count_(count) { ++count_; }
    CountedEvent(const CountedEvent&) = delete;
    CountedEvent& operator=(const CountedEvent&) = delete;
    ~CountedEvent() { --count_; }

  private:
    int& count_;
};

} // namespace

CXllApp::CXllApp(const CXlIntegration& integration) : integration_(integration) {
    SetInstance(this);
    com_helper_ = integration.MakeComHelper();
    wizard_registry_ = integration.MakeWizardRegistry();
    wizard_detector_ = integration.MakeWizardDetector();
    if (!wizard_detector_) {
        SetInstance(nullptr);
        throw CXlIllegalArgumentException(kMessageIllegalArgument);
    }
    SetRibbonMode(kRibbonModeNone);
}

CXllApp::~CXllApp() {
    if (current_application == this)
        SetInstance(nullptr);
}

CXllApp* CXllApp::Instance() {
    return current_application;
}

void CXllApp::SetInstance(CXllApp* instance) {
    current_application = instance;
}

bool CXllApp::SetRibbonMode(int mode) {
    switch (mode) {
    case kRibbonModeNone:
        SetRibbonImpl(std::make_unique<CXlpRibbonImplNull>(), mode);
        return true;
    case kRibbonModeShared:
        SetRibbonImpl(std::make_unique<CXlpRibbonImplShared>(), mode);
        return true;
    default:
        return false;
    }
}

void CXllApp::SetRibbonImpl(std::unique_ptr<IXlpRibbonImpl> ribbon, int mode) {
    ribbon_ = std::move(ribbon);
    ribbon_mode_ = mode;
}

// ---- Lifecycle

void CXllApp::OnAutoAdd() {}

int CXllApp::AutoAddResult() {
    return 1;
}

void CXllApp::OnAutoRemove() {}

int CXllApp::Reserved3() {
    return 1;
}

int CXllApp::Reserved4() {
    return 1;
}

void CXllApp::OnBeforeOpen() {}

int CXllApp::OnOpen() {
    return 1;
}

void CXllApp::OnClose() {}

void CXllApp::OnOpened() {}

int CXllApp::OnProcessAttach() {
    modulePath = ModulePath();
    // The others are attached at the end of the load.
    events.AttachEarly();
    return 1;
}

int CXllApp::OnProcessDetach() {
    events.DetachAll();
    functions.Clear();
    com_holder_.reset();
    isOpenedMark = false;
    return 1;
}

// ---- Events of the host

void EnableHostEvent(int number, bool on) {
    if (CXllApp* application = CXllApp::Instance())
        application->EnableEvent(number, on);
}

std::shared_ptr<IXlComHolder> CXllApp::ComHolder() {
    if (!com_holder_) {
        std::unique_ptr<IXlComHolder> holder = integration_.MakeComHolder();
        XlComFailure failure;
        if (!holder->Start(failure))
            throw CXlComException(failure.text, failure.code);
        com_holder_ = std::move(holder);
    }
    return com_holder_;
}

void CXllApp::KeepModuleDuringEvent() {
    if (events_in_progress_ > 0)
        integration_.KeepModule();
}

void CXllApp::EnableEvent(int number, bool on) {
    XlComFailure failure;
    if (on && !ComHolder()->Connect(failure))
        throw CXlComException(failure.text, failure.code);
    // Intentional: switching an event off keeps the connection.
    eventSwitches.at(static_cast<std::size_t>(number)) = on;
}

bool CXllApp::RaiseEvent(int number, bool is_cancellable, std::string_view signature,
                         std::initializer_list<XlEventArgument> arguments) {
    const auto index = static_cast<std::size_t>(number);
    if (index >= kEventCount)
        return false;
    std::u16string target = ToWide(eventHandlers[index]);
    // Only the observer function gets the number: a macro is set for a single event.
    const bool is_observer_call = target.empty();
    if (is_observer_call) {
        if (observerFunctionName.empty() || !eventSwitches[index])
            return false;
        target = observerFunctionName;
    }
    const CountedEvent in_progress(events_in_progress_);
    CXlOper answer;
    try {
        // The handler may unload the add-in.
        const std::shared_ptr<IXlComHolder> holder = ComHolder();
        XlEventCall call(*holder, target);
        if (is_observer_call)
            call.AddNumber(number);
        call.AddArguments(signature, {arguments});
        return call.Run(answer) && is_cancellable && answer.ToBool();
    } catch (const CXlComException&) {
        // Intentional: failures of the automation are not reported here.
        return false;
    }
}

bool CXllApp::Raise(XlHostEventNumber number, std::initializer_list<XlEventArgument> arguments) {
    const XlHostEventRow& row = *FindHostEvent(number);
    return RaiseEvent(number, row.is_cancellable, row.signature, arguments);
}

bool CXllApp::OnNewWorkbook(XlHostObject* workbook) {
    return Raise(kEventNewWorkbook, {workbook});
}

bool CXllApp::OnSelectionChange(XlHostObject* sheet, XlHostObject* range) {
    return Raise(kEventSelectionChange, {sheet, range});
}

bool CXllApp::OnBeforeDoubleClick(XlHostObject* sheet, XlHostObject* range) {
    return Raise(kEventBeforeDoubleClick, {sheet, range});
}

bool CXllApp::OnBeforeRightClick(XlHostObject* sheet, XlHostObject* range) {
    return Raise(kEventBeforeRightClick, {sheet, range});
}

bool CXllApp::OnSheetActivate(XlHostObject* sheet) {
    return Raise(kEventSheetActivate, {sheet});
}

bool CXllApp::OnSheetDeactivate(XlHostObject* sheet) {
    return Raise(kEventSheetDeactivate, {sheet});
}

bool CXllApp::OnCalculate(XlHostObject* sheet) {
    return Raise(kEventCalculate, {sheet});
}

bool CXllApp::OnSheetChange(XlHostObject* sheet, XlHostObject* range) {
    return Raise(kEventSheetChange, {sheet, range});
}

bool CXllApp::OnWorkbookOpen(XlHostObject* workbook) {
    return Raise(kEventWorkbookOpen, {workbook});
}

bool CXllApp::OnWorkbookActivate(XlHostObject* workbook) {
    return Raise(kEventWorkbookActivate, {workbook});
}

bool CXllApp::OnWorkbookDeactivate(XlHostObject* workbook) {
    return Raise(kEventWorkbookDeactivate, {workbook});
}

bool CXllApp::OnWorkbookBeforeClose(XlHostObject* workbook) {
    return Raise(kEventWorkbookBeforeClose, {workbook});
}

bool CXllApp::OnWorkbookBeforeSave(XlHostObject* workbook, bool save_as) {
    return Raise(kEventWorkbookBeforeSave, {workbook, save_as});
}

bool CXllApp::OnWorkbookEvent13(XlHostObject* workbook) {
    return Raise(kEventWorkbook13, {workbook});
}

bool CXllApp::OnWorkbookNewSheet(XlHostObject* workbook, XlHostObject* sheet) {
    return Raise(kEventWorkbookNewSheet, {workbook, sheet});
}

bool CXllApp::OnWorkbookEvent15(XlHostObject* workbook) {
    return Raise(kEventWorkbook15, {workbook});
}

bool CXllApp::OnWorkbookEvent16(XlHostObject* workbook) {
    return Raise(kEventWorkbook16, {workbook});
}

void CXllApp::OnReservedEvent17() {}

void CXllApp::OnReservedEvent18() {}

void CXllApp::OnReservedEvent19() {}

bool CXllApp::OnAfterCalculate() {
    return Raise(kEventAfterCalculate, {});
}

bool CXllApp::OnWorkbookAfterSave(XlHostObject* workbook, bool success) {
    return Raise(kEventWorkbookAfterSave, {workbook, success});
}

// ---- Names

int CXllApp::GetHostName(CXlOper& name) {
    return GetHostPath(name);
}

std::u16string CXllApp::GetAddInName() {
    return addInName.Wide();
}

std::string CXllApp::GetModuleText() {
    return PathText([this](CXlOper& name) { return GetHostName(name); });
}

// ---- Results

void CXllApp::ExceptionToValue(CXlOper& result, const CXlRuntimeException& exception) {
    PutException(result, exception);
}

bool CXllApp::ConfirmRegistrationFailure() {
    std::u16string names;
    for (const CXlFunctionDescriptor* descriptor : functions.All())
        if (descriptor->registered == 0)
            names += descriptor->functionName + u"\n";
    if (names.empty())
        return true;
    std::u16string text;
    FormatMessageText(text, kMessageRegistrationFailed, GetAddInName(), names);
    return Windows().AskYesNo(GetHostWindow(), text, WideMessageText(kMessageLoadFailureTitle));
}

void CXllApp::GetRibbonDefault(CXlOper& result, const XlRibbonCallback& callback) {
    PutRibbonDefault(result, callback);
}

} // namespace metrify
