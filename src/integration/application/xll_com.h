#pragma once

// The host's automation: its application object, its events, and the macros that it runs. A process has one
// such object, which is used on the host's main thread only.

#include "integration/application/event_connection.h"
#include "integration/application/instance_check.h"
#include "integration/application/macro_events.h"
#include "xllrt/app/xll_app.h"

#include <span>
#include <string>

namespace metrify {

class CXllCom {
  public:
    CXllCom() = default;
    /// Shuts down.
    ~CXllCom();
    CXllCom(const CXllCom&) = delete;
    CXllCom& operator=(const CXllCom&) = delete;

    /// The object that was initialised, or null.
    static CXllCom* Instance();

    /// Finds the host. Returns false, with the reason, on failure.
    bool Init(ComFailure& failure);
    bool Init(std::string& text, HRESULT& code);

    /// Disconnects from the host's events and releases its application object. Cannot be undone. Returns
    /// false, with the reason, if the host keeps a connection.
    bool Shutdown(ComFailure& failure);

    /// For the end of the process, when no COM object may be called: forgets the host without a call.
    void Abandon();

    IDispatch* Application() const { return application_.Get(); }

    // ---- Events

    /// Connects to the host's events or disconnects. Returns true if the requested state is reached. A host
    /// that keeps the connection is a failure, but its events have no effect afterwards.
    bool SetEvents(bool enable, ComFailure& failure);
    bool AreEventsConnected() const { return are_events_connected_; }

    /// Handles an event of an old host.
    void HandleMacroEvent(XlMacroEvent event);

    // ---- Macros and properties

    /// Runs a macro text with the host's alerts switched off.
    HRESULT RunMacroByText(std::u16string_view text, ComVariant& answer);
    /// The same for a macro's name, which is the first of the arguments.
    HRESULT RunMacroByName(std::span<const ComVariant> arguments, ComVariant& answer);

    /// The sheet that the user sees.
    HRESULT ActiveWorksheet(ComPtr<IDispatch>& sheet) const;

    // ---- Instance check

    /// Called back by the host that loaded the add-in.
    void NoteCallback() { instance_check_.NoteCallback(); }

  private:
    double host_version_ = 0.0;
    ComPtr<IDispatch> application_;
    CXllApp* application_object_ = nullptr;

    bool is_started_ = false;
    bool is_apartment_entered_ = false; // and must be left
    bool are_events_connected_ = false;
    CInstanceCheck instance_check_;
    CEventConnection connection_;
    CMacroEvents macro_events_;
};

} // namespace metrify
