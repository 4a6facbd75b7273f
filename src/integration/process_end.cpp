#include "integration/process_end.h"

#include "integration/application/xll_com.h"
#include "integration/wizard/wizard_hook.h"

namespace metrify {

void AbandonHost() {
    if (CXllCom* const com = CXllCom::Instance())
        com->Abandon();
    CWizardHook::Abandon();
}

} // namespace metrify
