// The commands of the shared ribbon.

#include "xllrt/host_link.h"
#include "xllrt/ribbon.h"
#include "xllrt/ribbon_command.h"
#include "xllrt/xll_app.h"

namespace metrify {

bool CXlpRibbonImplShared::IsAvailable() const {
    // Hosts before that version have none.
    return HostFlag();
}

void CXlpRibbonImplShared::Activate() {
    SendRibbonCommand("<");
}

void CXlpRibbonImplShared::Deactivate() {
    SendRibbonCommand(">");
}

void CXlpRibbonImplShared::Reset() {
    SendRibbonCommand("");
}

void CXlpRibbonImplShared::Refresh() {
    CXllApp* const application = CXllApp::Instance();
    SendRibbonCommand(application ? application->addInName.Narrow() : "");
}

void CXlpRibbonImplShared::Invalidate(const CXlOper& item) {
    SendRibbonCommand("", item.ToWideText());
}

} // namespace metrify
