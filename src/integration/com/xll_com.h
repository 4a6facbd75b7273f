#pragma once

// The host's automation: the application object of the very host that loaded the add-in, its events, and
// macros run through it. One exists in a process; everything happens on the host's main thread.

#include "integration/com/com_failure.h"
#include "integration/com/dispatch_sink.h"
#include "xllrt/app/xll_app.h"

#include <array>
#include <span>

namespace metrify {

class CXllCom {
  public:
    CXllCom() = default;
    /// Shuts down.
    ~CXllCom();
    CXllCom(const CXllCom&) = delete;
    CXllCom& operator=(const CXllCom&) = delete;

    /// The one that was started, or null.
    static CXllCom* Instance();

    /// Finds the host. False, with the reason, if that fails.
    bool Init(ComFailure& failure);
    bool Init(std::string& text, HRESULT& code);

    /// Disconnects from the host's events and releases its object. It can't be started again. False, with the
    /// reason, if the host keeps a connection.
    bool Shutdown(ComFailure& failure);

    /// For the end of the process, when no component may be called any more: forgets the host without a call.
    void Abandon();

    IDispatch* Application() const { return application_.Get(); }

    // ---- Events

    /// Connects to the host's events or disconnects. Gives whether the state asked for is reached. A host
    /// that can't be disconnected from is a failure, but its events have no effect afterwards.
    bool SetEvents(bool enable, ComFailure& failure);
    bool AreEventsConnected() const { return are_events_connected_; }

    /// An event of a host that calls a macro for it: 0 activation of a sheet, 1 deactivation, 2 calculation.
    /// The macro that the host had for it before runs afterwards, also if an observer throws.
    void HandleMacroEvent(std::size_t index);

    // ---- Macros and properties

    /// Runs a macro text, with the host's alerts switched off.
    HRESULT RunMacroByText(std::u16string_view text, ComVariant& answer);
    /// Runs a macro by its name, the first of the arguments, with the host's alerts switched off.
    HRESULT RunMacroByName(std::span<const ComVariant> arguments, ComVariant& answer);

    /// The sheet that the user sees.
    HRESULT ActiveWorksheet(ComPtr<IDispatch>& sheet) const;

    // ---- The proof

    /// Called back by the host that was asked to.
    void NoteCallback();

  private:
    struct MacroEvent {
        CXlFunctionDescriptor* descriptor = nullptr; // null until it is registered
        std::u16string saved_name;
    };

    // Finding the host by its window.
    bool FindByWindow(ComFailure& failure);
    bool ReadApplication(IDispatch* window, ComFailure& failure);

    // Finding the host among the running ones.
    bool InitCheckInstance(ComFailure& failure);
    bool SearchWithWorkbook(ComFailure& failure);
    bool InitExcelOleFix(ComFailure& failure);
    bool TermExcelOleFix(ComFailure& failure);
    bool IterateRot(ComFailure& failure);
    ComPtr<IDispatch> ActiveCandidate(ComFailure& failure) const;
    bool IsOurs(IDispatch* candidate);
    bool CallCheckInstance(IDispatch* candidate);

    // Events.
    bool Connect(ComFailure& failure);
    bool Disconnect(ComFailure& failure);
    bool SetMacros(ComFailure& failure);
    bool RestoreMacros(std::size_t count, ComFailure& failure);
    bool RegisterMacros();
    void NotifyMacroEvent(std::size_t index);

    bool is_armed_ = false; // the callback counts
    bool is_found_ = false;
    bool has_temporary_workbook_ = false;
    bool is_echo_off_ = false;
    double host_version_ = 0.0;
    ComPtr<IDispatch> application_;
    CXllApp* application_object_ = nullptr;

    bool is_started_ = false;
    bool is_apartment_entered_ = false; // and still has to be left
    bool are_events_connected_ = false;
    DWORD cookie_ = 0;
    ComPtr<CDispatchSink> sink_;
    std::array<MacroEvent, 3> macro_events_;
};

/// Where a range lies; with workbook and sheet in front if `external`.
HRESULT RangeAddress(IDispatch* range, std::u16string& text, bool external);

/// The name of a workbook or of a worksheet.
HRESULT ObjectName(IDispatch* object, std::u16string& name);

/// Has a host run a macro text.
HRESULT RunExcelMacroFromDisp(IDispatch* application, std::u16string_view text, ComVariant& answer);

} // namespace metrify
