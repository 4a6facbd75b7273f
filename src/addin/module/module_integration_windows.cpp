#include "addin/module/module_integration.h"
#include "integration/real_integration.h"

namespace metrify {

const CXlIntegration& ModuleIntegration() {
    static const CXlRealIntegration integration;
    return integration;
}

} // namespace metrify
