#include "xllrt/app/app_registration.h"

#include "xllrt/gate/host_window.h"
#include "xllrt/registry/registration.h"
#include "xllrt/text/message_catalogue.h"

namespace metrify {

namespace {

// Asks the host for the add-in's path.
RegistrationContext ContextOf(CXllApp& application) {
    RegistrationContext context{
        .moduleName = CXlOper(),
        .askHostName = [&application](CXlOper& name) { return application.GetHostName(name); },
        .helpFile = application.helpFile,
        .helpIds = application.helpIds,
        .shortRegistration = application.shortRegistration};
    context.moduleName.SetText(application.GetModuleText());
    return context;
}

} // namespace

bool RegisterAll(CXllApp& application) {
    // Observers may still add functions, or change them.
    CXlEventArgs args;
    application.events.registerFunctions.Notify(args);
    application.helpIds = AssignHelpIds(application.functions.All());
    const RegistrationContext context = ContextOf(application);
    bool is_complete = true;
    for (CXlFunctionDescriptor* descriptor : application.functions.All())
        is_complete &= RegisterFunction(context, *descriptor);
    return is_complete;
}

bool RegisterFunction(CXllApp& application, CXlFunctionDescriptor& descriptor) {
    return RegisterFunction(ContextOf(application), descriptor);
}

void UnregisterFunction(CXllApp& application, CXlFunctionDescriptor& descriptor) {
    UnregisterFunction(ContextOf(application), descriptor);
}

void UnregisterAll(CXllApp& application) {
    const RegistrationContext context = ContextOf(application);
    for (CXlFunctionDescriptor* descriptor : application.functions.All())
        UnregisterFunction(context, *descriptor);
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

} // namespace metrify
