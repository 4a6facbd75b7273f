#include "xllrt/app/xll_lifecycle.h"

#include "xllrt/app/app_registration.h"
#include "xllrt/app/observer_function.h"
#include "xllrt/app/xll_app.h"
#include "xllrt/fault/fault_handlers.h"
#include "xllrt/gate/host_alert.h"
#include "xllrt/gate/host_letters.h"
#include "xllrt/gate/host_paths.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/text/format_printf.h"

#include <array>
#include <span>
#include <vector>

namespace metrify {

namespace {

constinit bool is_opened = false;

// The extension of the help file.
constexpr std::string_view kHelpExtension = "chm";

bool HasRibbon(CXllApp& application) {
    return application.Ribbon().IsEnabled() && application.Ribbon().IsAvailable();
}

// ---- Opening, step by step

void TakePaths(CXllApp& application) {
    application.hostPath = GetHostPathText();
    application.addInDirectory = GetAddInDirectory(application.hostPath);
}

// Returns false if the add-in or an observer stops the load.
bool AllowsOpening(CXllApp& application) {
    application.OnBeforeOpen();
    if (application.OnOpen() == 0)
        return false;
    CXllOpenEventArgs args;
    application.events.open.Notify(args);
    return !args.cancel;
}

void OfferWizardRegistry(CXllApp& application) {
    IXlWizExUIFunctionRegistry* const registry = application.WizardRegistry();
    if (registry && registry->HasEntries() && registry->MakeReady())
        application.ComHelper().HoldRegistry(*registry);
}

void ChooseHelpFile(CXllApp& application) {
    const std::string& path = application.hostPath;
    if (application.helpFile.empty() && path.size() > kHelpExtension.size())
        application.helpFile = path.substr(0, path.size() - kHelpExtension.size()).append(kHelpExtension);
}

// Returns false if registrations failed and the user declines to load the add-in without them.
bool RegisterFunctions(CXllApp& application) {
    AddObserverFunction(application);
    if (RegisterAll(application) || application.ConfirmRegistrationFailure())
        return true;
    UnregisterAll(application);
    return false;
}

bool Load(CXllApp& application) {
    ReadHostLetters();
    TakePaths(application);
    bool is_loaded = AllowsOpening(application);
    if (is_loaded) {
        OfferWizardRegistry(application);
        ChooseHelpFile(application);
        is_loaded = RegisterFunctions(application);
    }
    if (HasRibbon(application))
        application.Ribbon().Activate();
    if (is_loaded) {
        application.events.AttachRest();
        ReadHostSeparators(application.listSeparator, application.rowLetter, application.columnLetter);
    }
    application.isOpenedMark = true;
    is_opened = is_loaded;
    return is_loaded;
}

void ReleaseWizardRegistry(CXllApp& application) {
    if (application.ComHelper().HoldsRegistry())
        application.ComHelper().ReleaseRegistry();
}

// ---- Undoing a failed load

// Undoes a load, so that another one may follow. Observers attached before the load stay, and so does what
// the application itself has built.
void UndoLoad(CXllApp& application, std::span<CXlFunctionDescriptor* const> functions_before) {
    application.events.DetachRest();
    for (CXlFunctionDescriptor* descriptor : application.functions.All())
        if (descriptor->registered != 0)
            UnregisterFunction(application, *descriptor);
    application.functions.Restore({functions_before.begin(), functions_before.end()});
    ReleaseWizardRegistry(application);
}

bool LoadOrUndo(CXllApp& application) {
    const std::span<CXlFunctionDescriptor* const> listed = application.functions.All();
    const std::vector<CXlFunctionDescriptor*> functions(listed.begin(), listed.end());
    try {
        if (Load(application))
            return true;
    } catch (...) {
        UndoLoad(application, functions);
        throw;
    }
    UndoLoad(application, functions);
    return false;
}

// ---- Reporting a failure

std::string LabelOf(CXllApp& application) {
    const std::array<std::string, 3> candidates = {application.addInName.Narrow(), application.hostPath,
                                                   application.modulePath};
    for (const std::string& candidate : candidates)
        if (!candidate.empty())
            return candidate;
    return "Add-in";
}

void ReportFailure(const CXlRuntimeException& exception) {
    std::string text;
    if (CXllApp* const application = CXllApp::Instance()) {
        FormatPrintf(text, "Unexpected error during initialization:\n%s\n%s will not be opened",
                     exception.what(), LabelOf(*application));
    } else {
        FormatPrintf(text, "Unexpected error during initialization:\n%s\nAdd-in will not be opened",
                     exception.what());
    }
    Alert(text, kAlertFailure);
}

bool LoadOrReport() {
    try {
        DetectHostVersion();
        if (!CXllApp::Instance())
            throw CXlRuntimeException(std::string("No instance of CXllApp has been instantiated."));
        return LoadOrUndo(*CXllApp::Instance());
    } catch (const CXlRuntimeException& exception) {
        ReportFailure(exception);
        is_opened = false;
        return false;
    }
}

} // namespace

bool IsAddInOpened() {
    return is_opened;
}

void SetAddInOpened(bool opened) {
    is_opened = opened;
}

int OpenAddIn() {
    if (is_opened || !LoadOrReport())
        return 0;
    InstallFaultHandlers();
    CXllApp::Instance()->OnOpened();
    return 1;
}

int CloseAddIn() {
    RestoreFaultHandlers();
    CXllApp* const application = CXllApp::Instance();
    if (!application)
        return 1;
    application->KeepModuleDuringEvent();
    ReleaseWizardRegistry(*application);
    if (is_opened) {
        CXlEventArgs args;
        application->events.close.Notify(args);
        // An observer may have cleared the flag.
        if (is_opened)
            application->OnClose();
    }
    if (HasRibbon(*application))
        application->Ribbon().Deactivate();
    if (IXlWizExUIFunctionRegistry* const registry = application->WizardRegistry())
        registry->Close();
    return 1;
}

int AddAddIn() {
    CXllApp* const application = CXllApp::Instance();
    if (!application)
        return 0;
    application->OnAutoAdd();
    return application->AutoAddResult() != 0 ? 1 : 0;
}

int RemoveAddIn() {
    CXllApp* const application = CXllApp::Instance();
    if (is_opened && application) {
        application->OnAutoRemove();
        UnregisterAll(*application);
    }
    return 1;
}

} // namespace metrify
