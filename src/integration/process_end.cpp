#include "integration/process_end.h"

#include "integration/wizard_hook.h"
#include "integration/xll_com.h"

namespace metrify {

void AbandonHost() {
    if (CXllCom* const com = CXllCom::Instance()) {
        com->Abandon();
    }
    CWizardHook::Abandon();
}

} // namespace metrify
