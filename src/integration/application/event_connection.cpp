#include "integration/application/event_connection.h"

#include "integration/com/busy_host.h"
#include "integration/com/kept_module.h"

#include <ocidl.h>

namespace metrify {

namespace {

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

} // namespace

bool CEventConnection::Connect(IDispatch* application, CXllApp* add_in, ComFailure& failure) {
    if (!application) {
        failure = {SystemText(u"AtlAdvise", E_POINTER), E_POINTER};
        return false;
    }
    const auto sink = CDispatchSink::Create(add_in);
    if (!sink) {
        failure = {u"CreateInstance", E_OUTOFMEMORY};
        return false;
    }
    // Queried through its interface, as a sink of any class would be.
    IUnknown* const object = sink.Get();
    ComPtr<IUnknown> identity;
    failure.code = object->QueryInterface(IID_IUnknown, identity.ReceiveAny());
    if (FAILED(failure.code)) {
        failure.text = u"QueryInterface";
        return false;
    }
    failure.code = AtlAdvise(application, identity.Get(), cookie_);
    if (FAILED(failure.code)) {
        failure.text = SystemText(u"AtlAdvise", failure.code);
        return false;
    }
    sink_ = sink;
    return true;
}

bool CEventConnection::Disconnect(IDispatch* application, ComFailure& failure) {
    const HRESULT code = CallBusyHost([this, application] { return AtlUnadvise(application, cookie_); });
    cookie_ = 0;
    // From now on events have no effect, even if the host still holds the sink.
    sink_->SetApplication(nullptr);
    if (FAILED(code)) {
        sink_.Release(); // the reference keeps it alive
        KeepModule();    // the host may still call into it
        failure = {SystemText(u"AtlUnadvise", code), code};
        return false;
    }
    sink_ = ComPtr<CDispatchSink>();
    return true;
}

} // namespace metrify
