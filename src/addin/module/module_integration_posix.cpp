#include "addin/module/module_integration.h"

namespace metrify {

const CXlIntegration& ModuleIntegration() {
    return NoIntegration();
}

} // namespace metrify
