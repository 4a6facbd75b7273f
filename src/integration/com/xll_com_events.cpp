// Connecting to the host's events: by a connection point, or in old hosts by three properties that name a
// macro.

#include "integration/com/busy_host.h"
#include "integration/com/command_descriptor.h"
#include "integration/com/dispatch_call.h"
#include "integration/com/guarded.h"
#include "integration/com/xll_com.h"
#include "xllrt/app/app_registration.h"
#include "xllrt/gate/host_paths.h"
#include "xllrt/text/code_page.h"

#include <ocidl.h>

namespace metrify {

namespace {

// Hosts above this version have a connection point.
constexpr double kLastMacroVersion = 5.0;

// In this order they are numbered.
constexpr std::array<const char16_t*, 3> kMacroEvents = {u"OnSheetActivate", u"OnSheetDeactivate",
                                                         u"OnCalculate"};

HRESULT FindPoint(IUnknown* source, ComPtr<IConnectionPoint>& point) {
    ComPtr<IConnectionPointContainer> container;
    const HRESULT code = source->QueryInterface(IID_IConnectionPointContainer, container.ReceiveAny());
    return FAILED(code) ? code : container->FindConnectionPoint(kHostApplicationEvents, point.Receive());
}

HRESULT AtlAdvise(IUnknown* source, IUnknown* sink, DWORD& cookie) {
    ComPtr<IConnectionPoint> point;
    const HRESULT code = FindPoint(source, point);
    return FAILED(code) ? code : point->Advise(sink, &cookie);
}

HRESULT AtlUnadvise(IUnknown* source, DWORD cookie) {
    ComPtr<IConnectionPoint> point;
    const HRESULT code = FindPoint(source, point);
    return FAILED(code) ? code : point->Unadvise(cookie);
}

// Keeps the module in memory to the end of the process: the host may still call into it.
void KeepModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<const wchar_t*>(&KeepModule), &module);
}

std::u16string BaseNameOfAddIn() {
    const std::string name = GetAddInFileName(GetHostPathText());
    return ToWide(std::string_view(name).substr(0, name.rfind('.')));
}

CXlFunctionDescriptor MacroDescriptor(const std::u16string& base_name, const char16_t* event) {
    return CommandDescriptor(FilledText(u"xll_{0}_{1}", base_name, event),
                             ToNarrow(FilledText(u"CXllComImpl_{0}", event)));
}

} // namespace

bool CXllCom::SetEvents(bool enable, ComFailure& failure) {
    failure = {};
    if (enable == are_events_connected_)
        return true;
    const bool has_point = host_version_ > kLastMacroVersion;
    if (enable) {
        are_events_connected_ = has_point ? Connect(failure) : SetMacros(failure);
        return are_events_connected_;
    }
    are_events_connected_ = false;
    return has_point ? Disconnect(failure) : RestoreMacros(kMacroEvents.size(), failure);
}

bool CXllCom::Connect(ComFailure& failure) {
    if (!application_) {
        failure = {SystemText(u"AtlAdvise", E_POINTER), E_POINTER};
        return false;
    }
    const auto sink = CDispatchSink::Create(application_object_);
    if (!sink) {
        failure = {u"CreateInstance", E_OUTOFMEMORY};
        return false;
    }
    // It is asked through its interface, as any object is.
    IUnknown* const object = sink.Get();
    ComPtr<IUnknown> identity;
    failure.code = object->QueryInterface(IID_IUnknown, identity.ReceiveAny());
    if (FAILED(failure.code)) {
        failure.text = u"QueryInterface";
        return false;
    }
    failure.code = AtlAdvise(application_.Get(), identity.Get(), cookie_);
    if (FAILED(failure.code)) {
        failure.text = SystemText(u"AtlAdvise", failure.code);
        return false;
    }
    sink_ = sink;
    return true;
}

bool CXllCom::Disconnect(ComFailure& failure) {
    const HRESULT code = CallBusyHost([this] { return AtlUnadvise(application_.Get(), cookie_); });
    cookie_ = 0;
    // From here on events have no effect, also if the host still holds the sink.
    sink_->SetApplication(nullptr);
    if (FAILED(code)) {
        sink_.Release(); // the reference keeps it alive
        KeepModule();
        failure = {SystemText(u"AtlUnadvise", code), code};
        return false;
    }
    sink_ = ComPtr<CDispatchSink>();
    return true;
}

bool CXllCom::SetMacros(ComFailure& failure) {
    if (!application_ || !RegisterMacros()) {
        failure = {u"xlfRegister", E_FAIL};
        return false;
    }
    for (std::size_t i = 0; i < macro_events_.size(); ++i) {
        MacroEvent& event = macro_events_[i];
        failure.code = GetTextProperty(application_.Get(), kMacroEvents[i], event.saved_name);
        if (SUCCEEDED(failure.code)) {
            failure.code =
                PutProperty(application_.Get(), kMacroEvents[i], ComVariant(event.descriptor->functionName));
        }
        if (FAILED(failure.code)) {
            failure.text = SystemText(kMacroEvents[i], failure.code);
            ComFailure dropped;
            RestoreMacros(i, dropped);
            return false;
        }
    }
    return true;
}

bool CXllCom::RestoreMacros(std::size_t count, ComFailure& failure) {
    bool is_done = true;
    for (std::size_t i = 0; i < count; ++i) {
        const ComVariant name(macro_events_[i].saved_name);
        const HRESULT code =
            CallBusyHost([this, i, &name] { return PutProperty(application_.Get(), kMacroEvents[i], name); });
        if (FAILED(code)) {
            failure = {SystemText(kMacroEvents[i], code), code};
            is_done = false;
        }
    }
    return is_done;
}

bool CXllCom::RegisterMacros() {
    const std::u16string base_name = BaseNameOfAddIn();
    for (std::size_t i = 0; i < macro_events_.size(); ++i) {
        CXlFunctionDescriptor*& descriptor = macro_events_[i].descriptor;
        if (!descriptor)
            descriptor = &application_object_->functions.Add(MacroDescriptor(base_name, kMacroEvents[i]));
        if (descriptor->registered == 0 && !RegisterFunction(*application_object_, *descriptor))
            return false;
    }
    return true;
}

void CXllCom::NotifyMacroEvent(std::size_t index) {
    switch (index) {
    case 0: {
        ComPtr<IDispatch> sheet;
        ActiveWorksheet(sheet);
        application_object_->OnSheetActivate(AsHostObject(sheet.Get()));
        break;
    }
    case 1:
        application_object_->OnSheetDeactivate(nullptr);
        break;
    default:
        application_object_->OnCalculate(nullptr);
        break;
    }
}

void CXllCom::HandleMacroEvent(std::size_t index) {
    if (application_object_)
        Guarded([this, index] { NotifyMacroEvent(index); });
    // The macro that the property named before still runs, after this add-in.
    const std::u16string& saved_name = macro_events_.at(index).saved_name;
    if (application_ && !saved_name.empty()) {
        ComVariant dropped;
        RunExcelMacroFromDisp(application_.Get(), FilledText(u"{0}()", saved_name), dropped);
    }
}

} // namespace metrify
