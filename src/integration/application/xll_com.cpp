#include "integration/application/xll_com.h"

#include "integration/application/macro_run.h"
#include "integration/application/object_text.h"
#include "integration/application/window_search.h"
#include "xllrt/gate/host_version.h"
#include "xllrt/text/code_page.h"

#include <objbase.h>

namespace metrify {

namespace {

// From this version on the application object can be found by the host's window.
constexpr double kFirstWindowVersion = 8.0;

// Newer hosts have a connection point for their events.
constexpr double kLastMacroVersion = 5.0;

constinit CXllCom* current_instance = nullptr;

} // namespace

CXllCom* CXllCom::Instance() {
    return current_instance;
}

CXllCom::~CXllCom() {
    ComFailure failure;
    if (!Shutdown(failure)) {
        // There is no caller to report to.
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
    is_apartment_entered_ = host_version_ >= kFirstWindowVersion; // the other search leaves it
    is_started_ =
        is_apartment_entered_
            ? FindApplicationByWindow(application_, failure)
            : instance_check_.InitCheckInstance(*application_object_, host_version_, application_, failure);
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
    connection_.Abandon();
    is_started_ = false;
    is_apartment_entered_ = false;
    are_events_connected_ = false;
    current_instance = nullptr;
}

bool CXllCom::SetEvents(bool enable, ComFailure& failure) {
    failure = {};
    if (enable == are_events_connected_)
        return true;
    const bool has_point = host_version_ > kLastMacroVersion;
    if (enable) {
        are_events_connected_ = has_point
                                    ? connection_.Connect(application_.Get(), application_object_, failure)
                                    : macro_events_.Connect(application_.Get(), application_object_, failure);
        return are_events_connected_;
    }
    are_events_connected_ = false;
    return has_point ? connection_.Disconnect(application_.Get(), failure)
                     : macro_events_.Disconnect(application_.Get(), failure);
}

void CXllCom::HandleMacroEvent(XlMacroEvent event) {
    macro_events_.Handle(event, application_, application_object_);
}

HRESULT CXllCom::RunMacroByText(std::u16string_view text, ComVariant& answer) {
    const ComPtr<IDispatch> application = application_; // the macro may shut down
    return metrify::RunMacroByText(application.Get(), text, answer);
}

HRESULT CXllCom::RunMacroByName(std::span<const ComVariant> arguments, ComVariant& answer) {
    const ComPtr<IDispatch> application = application_; // the macro may shut down
    return metrify::RunMacroByName(application.Get(), arguments, answer);
}

HRESULT CXllCom::ActiveWorksheet(ComPtr<IDispatch>& sheet) const {
    return GetActiveWorksheet(application_.Get(), sheet);
}

} // namespace metrify
