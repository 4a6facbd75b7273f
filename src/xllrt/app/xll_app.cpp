#include "xllrt/app/xll_app.h"

#include "xllrt/gate/host_paths.h"
#include "xllrt/platform/module_path.h"
#include "xllrt/registry/function_result.h"
#include "xllrt/text/format_printf.h"
#include "xllrt/text/message_catalogue.h"

#include <utility>

namespace metrify {

namespace {

constinit CXllApp* instance_in_force = nullptr;

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
    if (instance_in_force == this)
        SetInstance(nullptr);
}

CXllApp* CXllApp::Instance() {
    return instance_in_force;
}

void CXllApp::SetInstance(CXllApp* instance) {
    instance_in_force = instance;
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
    // The others wait for the end of the load.
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

// ---- Answers

void CXllApp::ExceptionToValue(CXlOper& result, const CXlRuntimeException& exception) {
    PutException(result, exception);
}

void CXllApp::GetRibbonDefault(CXlOper& result, const XlRibbonCallback& callback) {
    PutRibbonDefault(result, callback);
}

} // namespace metrify
