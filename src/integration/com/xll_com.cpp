#include "integration/com/xll_com.h"

#include "xllrt/gate/host_version.h"
#include "xllrt/text/code_page.h"

#include <objbase.h>

namespace metrify {

namespace {

// From this version on the host's window leads to its objects.
constexpr double kFirstWindowVersion = 8.0;

constinit CXllCom* current_instance = nullptr;

} // namespace

CXllCom* CXllCom::Instance() {
    return current_instance;
}

CXllCom::~CXllCom() {
    ComFailure failure;
    if (!Shutdown(failure)) {
        // There is no caller left to be told.
        OutputDebugStringW(AsSystemText(failure.text));
    }
    if (current_instance == this)
        current_instance = nullptr;
    if (is_apartment_entered_)
        CoUninitialize();
}

bool CXllCom::Init(ComFailure& failure) {
    if (current_instance) {
        failure = ComFailure::Sentence(u"An instance of CXllCom has already been created");
        return false;
    }
    current_instance = this;
    if (application_object_) {
        failure = ComFailure::Sentence(u"Init() has already been called");
        return false;
    }
    application_object_ = CXllApp::Instance();
    if (!application_object_) {
        failure = ComFailure::Sentence(u"No CXllApp instance found");
        return false;
    }
    if (const HRESULT code = CoInitialize(nullptr); FAILED(code)) {
        failure = {SystemText(u"CoInitialize", code), code};
        return false;
    }
    host_version_ = HostVersion();
    is_apartment_entered_ = host_version_ >= kFirstWindowVersion; // the search leaves it by itself
    is_started_ = is_apartment_entered_ ? FindByWindow(failure) : InitCheckInstance(failure);
    if (is_started_)
        failure = {};
    return is_started_;
}

bool CXllCom::Init(std::string& text, HRESULT& code) {
    ComFailure failure;
    const bool is_done = Init(failure);
    text = ToNarrow(failure.text);
    code = failure.code;
    return is_done;
}

bool CXllCom::Shutdown(ComFailure& failure) {
    failure = {};
    if (!is_started_)
        return true;
    const bool is_done = SetEvents(false, failure);
    application_ = ComPtr<IDispatch>();
    is_started_ = false;
    current_instance = nullptr;
    return is_done;
}

void CXllCom::Abandon() {
    application_.Release();
    sink_.Release();
    is_started_ = false;
    is_apartment_entered_ = false;
    are_events_connected_ = false;
    current_instance = nullptr;
}

void CXllCom::NoteCallback() {
    // A call that was not asked for proves nothing.
    if (is_armed_)
        is_found_ = true;
}

} // namespace metrify
