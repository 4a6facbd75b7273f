#pragma once

// This add-in as an application.

#include "addin/menu.h"
#include "xllrt/app/xll_app.h"

namespace metrify {

class CMetrifyApp : public CXllApp {
  public:
    using CXllApp::CXllApp;

    /// Builds the menu. Opening succeeds even if the host refuses the menu.
    int OnOpen() override;
    void OnClose() override;
    /// Sets the add-in's name and builds descriptors from its function records.
    int OnProcessAttach() override;

  private:
    menu_def menu_;
};

} // namespace metrify
