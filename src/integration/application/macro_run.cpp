#include "integration/application/macro_run.h"

#include "integration/com/dispatch_call.h"

namespace metrify {

namespace {

// Switches the host's alerts off for the lifetime of this object, unless they are off already.
class AlertsGuard {
  public:
    explicit AlertsGuard(IDispatch* application) : application_(application) {
        ComVariant value;
        were_on_ = SUCCEEDED(GetProperty(application, kAlerts, value)) && value.Become(VT_BOOL) &&
                   V_BOOL(&value.Get()) != VARIANT_FALSE;
        if (were_on_)
            PutProperty(application, kAlerts, ComVariant(false));
    }
    AlertsGuard(const AlertsGuard&) = delete;
    AlertsGuard& operator=(const AlertsGuard&) = delete;
    ~AlertsGuard() {
        if (were_on_)
            PutProperty(application_, kAlerts, ComVariant(true));
    }

  private:
    static constexpr const char16_t* kAlerts = u"DisplayAlerts";

    IDispatch* application_;
    bool were_on_ = false;
};

} // namespace

HRESULT RunExcelMacroFromDisp(IDispatch* application, std::u16string_view text, ComVariant& answer) {
    const ComVariant macro(text);
    return CallMember(application, {.name = u"ExecuteExcel4Macro", .flags = DISPATCH_METHOD}, {&macro, 1},
                      answer)
        .code;
}

HRESULT RunMacroByText(IDispatch* application, std::u16string_view text, ComVariant& answer) {
    if (!application)
        return E_POINTER;
    const AlertsGuard guard(application);
    return RunExcelMacroFromDisp(application, text, answer);
}

HRESULT RunMacroByName(IDispatch* application, std::span<const ComVariant> arguments, ComVariant& answer) {
    if (!application)
        return E_POINTER;
    const AlertsGuard guard(application);
    return CallMember(application, {.name = u"Run", .flags = DISPATCH_METHOD}, arguments, answer).code;
}

} // namespace metrify
