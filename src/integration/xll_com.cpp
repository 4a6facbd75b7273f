#include "integration/xll_com.h"

#include "xllrt/code_page.h"
#include "xllrt/host_version.h"

#include <objbase.h>

namespace metrify {

namespace {

// From this version on the host's window leads to its objects.
constexpr double kFirstWindowVersion = 8.0;

constinit CXllCom* instance_in_force = nullptr;

} // namespace

CXllCom* CXllCom::Instance() {
    return instance_in_force;
}

CXllCom::~CXllCom() {
    Shutdown();
    if (instance_in_force == this) {
        instance_in_force = nullptr;
    }
    if (is_apartment_entered_) {
        CoUninitialize();
    }
}

bool CXllCom::Init(ComFailure& failure) {
    failure = {.text = {}, .code = E_FAIL};
    if (instance_in_force) {
        failure.text = u"An instance of CXllCom has already been created";
        return false;
    }
    instance_in_force = this;
    if (application_object_) {
        failure.text = u"Init() has already been called";
        return false;
    }
    application_object_ = CXllApp::Instance();
    if (!application_object_) {
        failure.text = u"No CXllApp instance found";
        return false;
    }
    if (const HRESULT code = CoInitialize(nullptr); FAILED(code)) {
        failure = {SystemText(u"CoInitialize", code), code};
        return false;
    }
    host_version_ = HostVersion();
    is_apartment_entered_ = host_version_ >= kFirstWindowVersion; // the other road leaves it by itself
    is_started_ = is_apartment_entered_ ? FindByWindow(failure) : InitCheckInstance(failure);
    if (is_started_) {
        failure = {};
    }
    return is_started_;
}

bool CXllCom::Init(std::string& text, HRESULT& code) {
    ComFailure failure;
    const bool is_done = Init(failure);
    text = ToNarrow(failure.text);
    code = failure.code;
    return is_done;
}

void CXllCom::Shutdown() {
    if (!is_started_) {
        return;
    }
    ComFailure dropped;
    SetEvents(false, dropped);
    application_ = ComPtr<IDispatch>();
    is_started_ = false;
    instance_in_force = nullptr;
}

void CXllCom::NoteCallback() {
    // A call that nobody asked for proves nothing.
    if (is_armed_) {
        is_found_ = true;
    }
}

} // namespace metrify
