// An add-in that observes the host: it keeps workbooks named "Keep" open.

#include "integration/application/integration_exports.h"
#include "integration/real_integration.h"
#include "tests/called_during_event.h"
#include "xllrt/app/xll_app.h"
#include "xllrt/app/xll_exports.h"
#include "xllrt/event/app_events.h"

namespace metrify {

namespace {

const CXlRealIntegration integration;

class ObservingApp final : public CXllApp {
  public:
    using CXllApp::CXllApp;

    // There is no user to ask.
    bool ConfirmRegistrationFailure() override { return true; }
};

ObservingApp application(integration);

class Keeper final : public CXlStaticEventObserver<CXlBeforeCloseEventArgs> {
  public:
    Keeper() : CXlStaticEventObserver(CXlWorkbookBeforeCloseEvent::Chain()) {}
    void Notify(CXlBeforeCloseEventArgs& args) override { args.cancel = args.workbook == "Keep"; }
};

Keeper keeper;

// Lets the host act during an event.
class Caller final : public CXlStaticEventObserver<CXlWorkbookEventArgs> {
  public:
    Caller() : CXlStaticEventObserver(CXlWorkbookOpenEvent::Chain()) {}
    void Notify(CXlWorkbookEventArgs& args) override { CallFunctionIn(args.workbook); }
};

Caller caller;

} // namespace

} // namespace metrify
