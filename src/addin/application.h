#pragma once

// This add-in as an application.

#include "xllrt/xll_app.h"

namespace metrify {

class CMetrifyApp : public CXllApp {
  public:
    using CXllApp::CXllApp;

    /// Names the add-in and takes over its function records.
    int OnProcessAttach() override;
};

} // namespace metrify
