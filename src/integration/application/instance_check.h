#pragma once

// The search for the host that loaded the add-in, among all running hosts. Each candidate is asked to call a
// function of the add-in: only the host that loaded it can.

#include "integration/com/com_failure.h"
#include "integration/com/com_ptr.h"
#include "xllrt/app/xll_app.h"

#include <oaidl.h>

namespace metrify {

class CInstanceCheck {
  public:
    /// Searches, and leaves the COM apartment afterwards. Returns false, with the reason, if no host is
    /// found.
    bool InitCheckInstance(CXllApp& add_in, double host_version, ComPtr<IDispatch>& application,
                           ComFailure& failure);

    /// Called by the host. Has no effect while no candidate is being asked.
    void NoteCallback();

  private:
    bool Search(CXllApp& add_in, double host_version, ComPtr<IDispatch>& application, ComFailure& failure);
    bool InitExcelOleFix(ComFailure& failure);
    bool TermExcelOleFix(ComFailure& failure);
    bool CallCheckInstance(CXllApp& add_in, IDispatch* candidate);

    bool is_armed_ = false; // a callback counts
    bool is_found_ = false;
    bool has_temporary_workbook_ = false;
    bool is_echo_off_ = false;
};

} // namespace metrify
