#include "addin/application.h"

namespace metrify {

int CMetrifyApp::OnProcessAttach() {
    if (CXllApp::OnProcessAttach() != 0) {
        addInName.Assign("Metrify");
        functions.BuildDescriptors();
    }
    return 1;
}

} // namespace metrify
