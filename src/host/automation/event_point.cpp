#include "host/automation/event_point.h"

#include <olectl.h>
#include <vector>

namespace metrify::host {

HRESULT EventPoint::GetConnectionInterface(IID* iid) {
    *iid = kApplicationEvents;
    return S_OK;
}

HRESULT EventPoint::GetConnectionPointContainer(IConnectionPointContainer** /*container*/) {
    return E_NOTIMPL;
}

HRESULT EventPoint::Advise(IUnknown* sink, DWORD* cookie) {
    if (IsCallFailing())
        return CONNECT_E_ADVISELIMIT;
    ComPtr<IDispatch> events;
    if (!sink || (FAILED(sink->QueryInterface(kApplicationEvents, events.ReceiveAny())) &&
                  FAILED(sink->QueryInterface(IID_IDispatch, events.ReceiveAny()))))
        return CONNECT_E_CANNOTCONNECT;
    *cookie = ++last_cookie_;
    sinks_.emplace(*cookie, std::move(events));
    return S_OK;
}

HRESULT EventPoint::Unadvise(DWORD cookie) {
    if (IsCallFailing())
        return E_FAIL;
    return sinks_.erase(cookie) != 0 ? S_OK : CONNECT_E_NOCONNECTION;
}

HRESULT EventPoint::EnumConnections(IEnumConnections** /*connections*/) {
    return E_NOTIMPL;
}

HRESULT EventPoint::Fire(DISPID event, std::span<const VARIANT> arguments) {
    // The interface takes the arguments in reverse order.
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    HRESULT code = S_OK;
    const auto sinks = sinks_; // a sink may disconnect during its call
    for (const auto& [cookie, sink] : sinks)
        code = sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                            nullptr, nullptr);
    return code;
}

} // namespace metrify::host
