#include "host/automation/application_object.h"

#include "host/automation/cell_variant.h"
#include "host/automation/macro_text.h"

#include <olectl.h>
#include <optional>

namespace metrify::host {

namespace {

HRESULT PutAnswer(const std::optional<CellValue>& value, ComVariant& answer) {
    if (!value)
        return DISP_E_EXCEPTION;
    answer = ToVariant(*value);
    return S_OK;
}

} // namespace

ApplicationObject::ApplicationObject(const std::shared_ptr<ObjectContext>& context, HostState& state)
    : DispatchObject(context), state_(&state), events_(MakeObject<EventPoint>(context)) {}

std::span<const MemberRow<ApplicationObject>> ApplicationObject::Members() {
    using Self = ApplicationObject;
    static constexpr MemberRow<Self> members[] = {
        {L"Application", &Self::Application},
        {L"ExecuteExcel4Macro", &Self::ExecuteMacro},
        {L"Run", &Self::Run},
        {L"DisplayAlerts", &Self::DisplayAlerts},
        {L"OnSheetActivate", &Self::EventMacro<0>},
        {L"OnSheetDeactivate", &Self::EventMacro<1>},
        {L"OnCalculate", &Self::EventMacro<2>},
        {L"ActiveWorksheet", &Self::ActiveWorksheet},
        {L"ActiveSheet", &Self::ActiveWorksheet},
        {L"Name", &Self::Name},
    };
    return members;
}

void ApplicationObject::Disconnect() {
    state_ = nullptr;
    settings.activeWorksheet = ComPtr<IDispatch>();
    events_->Clear();
}

HRESULT ApplicationObject::EnumConnectionPoints(IEnumConnectionPoints** /*points*/) {
    return E_NOTIMPL;
}

HRESULT ApplicationObject::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
    if (IsCallFailing())
        return E_FAIL;
    if (iid != kApplicationEvents)
        return CONNECT_E_NOCONNECTION;
    *point = ComPtr<IConnectionPoint>(events_.Get()).Release();
    return S_OK;
}

HRESULT ApplicationObject::Application(const MemberCall& /*call*/, ComVariant& answer) {
    answer = ComVariant(static_cast<IDispatch*>(this));
    return S_OK;
}

HRESULT ApplicationObject::ExecuteMacro(const MemberCall& call, ComVariant& answer) {
    return state_ ? PutAnswer(RunMacroText(*state_, call.At(0).Text()), answer) : E_FAIL;
}

HRESULT ApplicationObject::Run(const MemberCall& call, ComVariant& answer) {
    if (!state_)
        return E_FAIL;
    std::vector<CellValue> arguments;
    for (std::size_t i = 1; i < call.count(); ++i)
        arguments.push_back(FromVariant(call.At(i)));
    return PutAnswer(RunMacro(*state_, call.At(0).Text(), arguments), answer);
}

HRESULT ApplicationObject::DisplayAlerts(const MemberCall& call, ComVariant& answer) {
    if (call.IsPut()) {
        const ComVariant given = call.At(0);
        settings.displayAlerts = given.Type() == VT_BOOL && V_BOOL(&given.Get()) != VARIANT_FALSE;
        return S_OK;
    }
    answer = settings.areAlertsANumber ? ComVariant(std::int32_t{settings.displayAlerts ? 1 : 0})
                                       : ComVariant(settings.displayAlerts);
    return S_OK;
}

HRESULT ApplicationObject::ActiveWorksheet(const MemberCall& /*call*/, ComVariant& answer) {
    answer = ComVariant(settings.activeWorksheet.Get());
    return S_OK;
}

HRESULT ApplicationObject::Name(const MemberCall& /*call*/, ComVariant& answer) {
    answer = ComVariant(u"Spreadsheet");
    return S_OK;
}

template <std::size_t Index>
HRESULT ApplicationObject::EventMacro(const MemberCall& call, ComVariant& answer) {
    std::u16string& macro = settings.eventMacros[Index];
    if (call.IsPut())
        macro = call.At(0).Text();
    else
        answer = ComVariant(macro);
    return S_OK;
}

} // namespace metrify::host
