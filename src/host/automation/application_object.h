#pragma once

// The host itself, as automation shows it.

#include "host/automation/dispatch_object.h"
#include "host/automation/event_point.h"
#include "host/state/host_state.h"

#include <array>

namespace metrify::host {

/// What automation can set, and what is made so on purpose.
struct ApplicationSettings {
    bool displayAlerts = true;
    bool areAlertsANumber = false; ///< the setting goes out as a number
    /// The macros for activation, deactivation and calculation of a sheet.
    std::array<std::u16string, 3> eventMacros;
    ComPtr<IDispatch> activeWorksheet;
    bool knowsActiveWorksheet = true; ///< otherwise the sheet has the name "ActiveSheet" alone
};

class ApplicationObject final : public DispatchObject<ApplicationObject, IConnectionPointContainer> {
  public:
    ApplicationObject(const std::shared_ptr<ObjectSurroundings>& surroundings, HostState& state);

    static std::span<const MemberRow<ApplicationObject>> Members();
    bool Knows(std::wstring_view member) const {
        return settings.knowsActiveWorksheet || member != L"ActiveWorksheet";
    }

    ApplicationSettings settings;

    EventPoint& events() { return *events_.Get(); }

    /// The host goes; calls fail from now on.
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
