#pragma once

// The connection point of the host's events.

#include "host/automation/counted_object.h"
#include "integration/com/com_value.h"

#include <map>
#include <ocidl.h>
#include <span>

namespace metrify::host {

/// The host's application events.
inline constexpr IID kApplicationEvents = {
    0x00024413, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

class EventPoint final : public CountedObject<IConnectionPoint> {
  public:
    using CountedObject::CountedObject;

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

    /// The number of connected sinks.
    std::size_t count() const { return sinks_.size(); }
    /// The sink connected first, or null.
    ComPtr<IDispatch> First() const { return sinks_.empty() ? ComPtr<IDispatch>() : sinks_.begin()->second; }

    /// Fires an event at all sinks, with arguments in order of declaration. Returns the code of the last
    /// sink.
    HRESULT Fire(DISPID event, std::span<const VARIANT> arguments);

    /// Releases all sinks.
    void Clear() { sinks_.clear(); }

  private:
    std::map<DWORD, ComPtr<IDispatch>> sinks_;
    DWORD last_cookie_ = 0;
};

} // namespace metrify::host
