#pragma once

// The host's application object.

#include "host/automation/dispatch_object.h"
#include "host/automation/event_point.h"
#include "host/state/host_state.h"

#include <array>

namespace metrify::host {

/// Properties that automation can set, and variations for tests.
struct ApplicationSettings {
    bool displayAlerts = true;
    bool areAlertsANumber = false; ///< the property is read as a number
    /// The macros for activation, deactivation and calculation of a sheet.
    std::array<std::u16string, 3> eventMacros;
    ComPtr<IDispatch> activeWorksheet;
    bool knowsActiveWorksheet = true; ///< otherwise only the property "ActiveSheet" exists
};

class ApplicationObject final : public DispatchObject<ApplicationObject, IConnectionPointContainer> {
  public:
    ApplicationObject(const std::shared_ptr<ObjectContext>& context, HostState& state);

    static std::span<const MemberRow<ApplicationObject>> Members();
    bool Knows(std::wstring_view member) const {
        return settings.knowsActiveWorksheet || member != L"ActiveWorksheet";
    }

    ApplicationSettings settings;

    EventPoint& events() { return *events_.Get(); }

    /// Called when the host ends. Calls fail afterwards.
    void Disconnect();

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

  private:
    HRESULT Application(const MemberCall& call, ComVariant& answer);
    HRESULT ExecuteMacro(const MemberCall& call, ComVariant& answer);
    HRESULT Run(const MemberCall& call, ComVariant& answer);
    HRESULT DisplayAlerts(const MemberCall& call, ComVariant& answer);
    HRESULT ActiveWorksheet(const MemberCall& call, ComVariant& answer);
    HRESULT Name(const MemberCall& call, ComVariant& answer);
    template <std::size_t Index>
    HRESULT EventMacro(const MemberCall& call, ComVariant& answer);

    HostState* state_;
    ComPtr<EventPoint> events_;
};

} // namespace metrify::host
