#pragma once

// This add-in as an application.

#include "addin/menu.h"
#include "xllrt/app/xll_app.h"

namespace metrify {

class CMetrifyApp : public CXllApp {
  public:
    using CXllApp::CXllApp;

    /// Builds the menu. The add-in opens without it too.
    int OnOpen() override;
    void OnClose() override;
    /// Names the add-in and takes over its function records.
    int OnProcessAttach() override;

  private:
    menu_def menu_;
};

} // namespace metrify
