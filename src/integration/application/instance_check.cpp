#include "integration/application/instance_check.h"

#include "integration/application/command_descriptor.h"
#include "integration/application/integration_exports.h"
#include "integration/application/macro_run.h"
#include "integration/application/running_hosts.h"
#include "xllrt/app/app_registration.h"
#include "xllrt/gate/host_gate.h"
#include "xllrt/text/code_page.h"
#include "xllrt/text/format_printf.h"

#include <objbase.h>

namespace metrify {

namespace {

constexpr const char16_t* kCallbackName = u"xlCheckInstance";

// The type of the temporary workbook.
constexpr std::int32_t kWorkbookKind = 6;

std::u16string DecimalText(int number) {
    std::u16string text;
    FormatPrintf(text, u"%d", number);
    return text;
}

CXlFunctionDescriptor CallbackDescriptor() {
    CXlFunctionDescriptor descriptor = CommandDescriptor(kCallbackName, "xlCheckInstance");
    descriptor.narrow.category = "Private Macros";
    descriptor.wide.category = u"Private Macros";
    descriptor.narrow.description = "Implementation function used by library initialisation routines";
    descriptor.wide.description = u"Implementation function used by library initialisation routines";
    return descriptor;
}

// Registers the callback for the lifetime of this object.
class CallbackRegistration {
  public:
    explicit CallbackRegistration(CXllApp& application) : application_(application) {
        CXlFunctionDescriptor* descriptor = application.functions.FindFunction(kCallbackName);
        if (!descriptor)
            descriptor = &application.functions.Add(CallbackDescriptor());
        is_registered_ = RegisterFunction(application, *descriptor);
    }
    CallbackRegistration(const CallbackRegistration&) = delete;
    CallbackRegistration& operator=(const CallbackRegistration&) = delete;
    ~CallbackRegistration() {
        if (!is_registered_)
            return;
        if (CXlFunctionDescriptor* const descriptor = application_.functions.FindFunction(kCallbackName)) {
            UnregisterFunction(application_, *descriptor);
            application_.functions.RemoveFunction(kCallbackName);
        }
    }

    bool IsRegistered() const { return is_registered_; }

  private:
    CXllApp& application_;
    bool is_registered_ = false;
};

// Runs a command of the host. On failure the reason is the text with the host's code.
template <class... Arguments>
bool Command(int command, const char16_t* text, ComFailure& failure, const Arguments&... arguments) {
    const int code = CallDiscard(command, arguments...);
    if (code == xlretSuccess)
        return true;
    failure = ComFailure::Sentence(FilledText(text, DecimalText(code)));
    return false;
}

} // namespace

bool CInstanceCheck::InitCheckInstance(CXllApp& add_in, double host_version, ComPtr<IDispatch>& application,
                                       ComFailure& failure) {
    is_armed_ = false;
    is_found_ = false;
    bool is_done = false;
    {
        const CallbackRegistration callback(add_in);
        if (callback.IsRegistered())
            is_done = Search(add_in, host_version, application, failure);
        else
            failure = ComFailure::Sentence(u"InitCheckInstance() failed to register callback");
    }
    CoUninitialize();
    return is_done;
}

bool CInstanceCheck::Search(CXllApp& add_in, double host_version, ComPtr<IDispatch>& application,
                            ComFailure& failure) {
    if (!InitExcelOleFix(failure))
        return false;
    bool is_done = FindRunningApplication(
        host_version, [this, &add_in](IDispatch* candidate) { return CallCheckInstance(add_in, candidate); },
        application, failure);
    ComFailure closing;
    if (!TermExcelOleFix(closing)) {
        failure = closing;
        is_done = false;
    }
    if (!is_done)
        application = ComPtr<IDispatch>();
    return is_done;
}

bool CInstanceCheck::InitExcelOleFix(ComFailure& failure) {
    if (!Command(xlcEcho, u"InitExcelOleFix() failed to switch off workbook echo with error {0}", failure,
                 CXlOper(false)))
        return false;
    is_echo_off_ = true;
    CXlOper kind;
    kind.SetInt(kWorkbookKind);
    if (!Command(xlcNew, u"InitExcelOleFix() failed to create new workbook with error {0}", failure, kind))
        return false;
    has_temporary_workbook_ = true;
    return true;
}

bool CInstanceCheck::TermExcelOleFix(ComFailure& failure) {
    bool is_done = true;
    if (has_temporary_workbook_) {
        has_temporary_workbook_ = false;
        is_done = Command(xlcClose, u"TermExcelOleFix() failed to close temporary workbook with error {0}",
                          failure, CXlOper(false));
    }
    if (is_echo_off_) {
        is_echo_off_ = false;
        // Intentional: %d is no placeholder here, so the code isn't shown.
        is_done &= Command(xlcEcho, u"TermExcelOleFix() failed to restore echo with error %d", failure,
                           CXlOper(true));
    }
    return is_done;
}

bool CInstanceCheck::CallCheckInstance(CXllApp& add_in, IDispatch* candidate) {
    // Intentional: the percent sign before the path is part of the text.
    const std::u16string macro = FilledText(u"CALL(\"%{0}\",\"{1}\",\"j\")", ToWide(add_in.GetModuleText()),
                                            std::u16string_view(kCallbackName));
    ComVariant dropped;
    is_armed_ = true;
    RunExcelMacroFromDisp(candidate, macro, dropped);
    is_armed_ = false;
    return is_found_;
}

void CInstanceCheck::NoteCallback() {
    // A call that was not asked for proves nothing.
    if (is_armed_)
        is_found_ = true;
}

} // namespace metrify
