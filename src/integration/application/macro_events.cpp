#include "integration/application/macro_events.h"

#include "integration/application/command_descriptor.h"
#include "integration/application/dispatch_sink.h"
#include "integration/application/macro_run.h"
#include "integration/application/object_text.h"
#include "integration/com/busy_host.h"
#include "integration/com/dispatch_call.h"
#include "integration/com/guarded.h"
#include "xllrt/app/app_registration.h"
#include "xllrt/gate/host_paths.h"
#include "xllrt/text/code_page.h"

namespace metrify {

namespace {

// The properties, indexed by event.
constexpr std::array<const char16_t*, 3> kMacroEvents = {u"OnSheetActivate", u"OnSheetDeactivate",
                                                         u"OnCalculate"};

std::u16string BaseNameOfAddIn() {
    const std::string name = GetAddInFileName(GetHostPathText());
    return ToWide(std::string_view(name).substr(0, name.rfind('.')));
}

CXlFunctionDescriptor MacroDescriptor(const std::u16string& base_name, const char16_t* event) {
    return CommandDescriptor(FilledText(u"xll_{0}_{1}", base_name, event),
                             ToNarrow(FilledText(u"CXllComImpl_{0}", event)));
}

void CallOperation(XlMacroEvent event, IDispatch* application, CXllApp& add_in) {
    switch (event) {
    case kMacroSheetActivate: {
        ComPtr<IDispatch> sheet;
        GetActiveWorksheet(application, sheet);
        add_in.OnSheetActivate(AsHostObject(sheet.Get()));
        break;
    }
    case kMacroSheetDeactivate:
        add_in.OnSheetDeactivate(nullptr);
        break;
    case kMacroCalculate:
        add_in.OnCalculate(nullptr);
        break;
    }
}

} // namespace

bool CMacroEvents::Connect(IDispatch* application, CXllApp* add_in, ComFailure& failure) {
    if (!application || !add_in || !Register(*add_in)) {
        failure = {u"xlfRegister", E_FAIL};
        return false;
    }
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        Entry& entry = entries_[i];
        failure.code = GetTextProperty(application, kMacroEvents[i], entry.saved_name);
        if (SUCCEEDED(failure.code))
            failure.code = PutProperty(application, kMacroEvents[i], ComVariant(entry.macro));
        if (FAILED(failure.code)) {
            failure.text = SystemText(kMacroEvents[i], failure.code);
            ComFailure dropped;
            Restore(application, i, dropped);
            return false;
        }
    }
    return true;
}

bool CMacroEvents::Disconnect(IDispatch* application, ComFailure& failure) {
    return Restore(application, kCount, failure);
}

bool CMacroEvents::Restore(IDispatch* application, std::size_t count, ComFailure& failure) {
    bool is_done = true;
    for (std::size_t i = 0; i < count; ++i) {
        const ComVariant name(entries_[i].saved_name);
        const HRESULT code =
            CallBusyHost([application, i, &name] { return PutProperty(application, kMacroEvents[i], name); });
        if (FAILED(code)) {
            failure = {SystemText(kMacroEvents[i], code), code};
            is_done = false;
        }
    }
    return is_done;
}

bool CMacroEvents::Register(CXllApp& add_in) {
    const std::u16string base_name = BaseNameOfAddIn();
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        // Not the earlier descriptor: a failed open takes it off the list, and only listed ones are
        // unregistered.
        CXlFunctionDescriptor macro = MacroDescriptor(base_name, kMacroEvents[i]);
        CXlFunctionDescriptor* descriptor = add_in.functions.FindFunction(macro.functionName);
        if (!descriptor)
            descriptor = &add_in.functions.Add(std::move(macro));
        if (descriptor->registered == 0 && !RegisterFunction(add_in, *descriptor))
            return false;
        entries_[i].macro = descriptor->functionName;
    }
    return true;
}

void CMacroEvents::Handle(XlMacroEvent event, ComPtr<IDispatch> application, CXllApp* add_in) {
    // The operation may unload the add-in and destroy this object.
    const std::u16string saved_name = entries_.at(event).saved_name;
    if (add_in)
        Guarded([&] { CallOperation(event, application.Get(), *add_in); });
    if (application && !saved_name.empty()) {
        ComVariant dropped;
        RunExcelMacroFromDisp(application.Get(), FilledText(u"{0}()", saved_name), dropped);
    }
}

} // namespace metrify
