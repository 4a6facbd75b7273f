// An add-in that observes the host: it keeps workbooks named "Keep" open.

#include "integration/integration_exports.h"
#include "integration/real_integration.h"
#include "xllrt/app_events.h"
#include "xllrt/xll_app.h"
#include "xllrt/xll_exports.h"

namespace metrify {

namespace {

const CXlRealIntegration integration;

class ObservingApp final : public CXllApp {
  public:
    using CXllApp::CXllApp;

    // Nobody is there to be asked.
    bool ConfirmRegistrationFailure() override { return true; }
};

ObservingApp application(integration);

class Keeper final : public CXlStaticEventObserver<CXlBeforeCloseEventArgs> {
  public:
    Keeper() : CXlStaticEventObserver(CXlWorkbookBeforeCloseEvent::Chain()) {}
    void Notify(CXlBeforeCloseEventArgs& args) override { args.cancel = args.workbook == "Keep"; }
};

Keeper keeper;

} // namespace

} // namespace metrify
